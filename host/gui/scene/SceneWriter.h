// The builder's output side: takes shapes in an entity's own coordinates, places them through the current
// insertion chain and writes them into the scene relative to its local origin.
#pragma once

#include "host/dxf/Entity.h"
#include "host/gui/scene/Placement.h"
#include "host/gui/scene/Scene.h"

#include <optional>
#include <string>
#include <vector>

namespace dxf {
class Document;
}

namespace host::gui {

// Reading an entity's values: the first tag with a code, as a number, with a fallback for a missing or
// malformed value (a drawing from another program may leave any of them out).
double number(const dxf::Entity& entity, int code, double fallback = 0.0);
Vec3 point(const dxf::Entity& entity, int code, Vec3 fallback = {});  // code 10 reads 10/20/30
Vec3 extrusion(const dxf::Entity& entity);

class SceneWriter {
 public:
  SceneWriter(Scene& scene, const dxf::Document& document) : document(document), scene_(scene) {}

  const dxf::Document& document;  // decodes the drawing's texts

  // The insertion chain and colour of what is written next.
  Affine placement;
  Rgb colour = 0xFFFFFF;

  // A run of points in entity coordinates (already through `within`, e.g. the entity's object system).
  void path(const std::vector<Vec3>& points, bool closed, const Affine& within, bool filled = false);
  void label(const std::wstring& text, Vec3 at, double height, double rotation, const Affine& within);
  void node(Vec3 at, const Affine& within);
  void snap(Vec3 at, SnapKind kind, const Affine& within);

 private:
  Vec2 local(Vec3 world);
  Scene& scene_;
  bool haveOrigin_ = false;
};

// Points along an arc of `radius` about `centre` from angle a0 to a1 (radians, counter-clockwise, a1 > a0).
void appendArc(std::vector<Vec3>& out, Vec3 centre, double radius, double a0, double a1);
// The arc between two polyline vertices with the bulge (tan of a quarter of the included angle), end excluded.
void appendBulge(std::vector<Vec3>& out, Vec3 from, Vec3 to, double bulge);

// Shapes of curved and compound entities (CurveShapes.cpp).
void writeLightPolyline(SceneWriter& out, const dxf::Entity& entity);
void writePolyline(SceneWriter& out, const dxf::Entity& entity);
void writeEllipse(SceneWriter& out, const dxf::Entity& entity);
void writeSpline(SceneWriter& out, const dxf::Entity& entity);
void writeHatch(SceneWriter& out, const dxf::Entity& entity);
// Texts (TextShapes.cpp): TEXT and ATTRIB, MTEXT.
void writeText(SceneWriter& out, const dxf::Entity& entity);
void writeMText(SceneWriter& out, const dxf::Entity& entity);
// The plain text of a multi-line text's contents: paragraphs as line breaks, formatting codes left out.
std::wstring plainMText(const std::wstring& contents);
// A single-line text with its control codes (%%d degree, %%c diameter, %%p plus-minus) resolved.
std::wstring plainText(const std::wstring& contents);

}  // namespace host::gui
