#include "host/gui/scene/SceneBuilder.h"

#include "host/dxf/Document.h"
#include "host/dxf/Sections.h"
#include "host/gui/scene/Colours.h"
#include "host/gui/scene/SceneWriter.h"

#include <cctype>
#include <cmath>
#include <numbers>
#include <unordered_map>

namespace host::gui {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
// Nested blocks deeper than this are a damaged or hostile drawing (a block that holds itself).
constexpr int kMaxBlockDepth = 16;
// Array insertions beyond this many copies are drawn as their first copy only.
constexpr long long kMaxArrayCopies = 10000;

std::string upper(std::string_view text) {
  std::string out(dxf::trimBlanks(text));
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

struct LayerStyle {
  bool shown = true;
  Rgb colour = 0xFFFFFF;
};

// The block definitions, read from the drawing once when an insertion needs them.
class BlockLibrary {
 public:
  explicit BlockLibrary(const dxf::Document& document) : document_(document) {}

  const dxf::Block* find(std::string_view name) {
    if (!loaded_) load();
    const auto it = byName_.find(upper(name));
    return it == byName_.end() ? nullptr : it->second;
  }

 private:
  void load() {
    loaded_ = true;
    bytes_ = document_.bytes();
    dxf::TagReader reader(bytes_, bytes_.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    if (!dxf::readDrawing(reader, bytes_, drawing_)) return;
    for (const dxf::Section& s : drawing_.sections)
      for (const dxf::Block& b : s.blocks) byName_.emplace(upper(b.begin.value(2)), &b);
  }

  const dxf::Document& document_;
  bool loaded_ = false;
  std::string bytes_;
  dxf::Drawing drawing_;
  std::unordered_map<std::string, const dxf::Block*> byName_;
};

class Builder {
 public:
  Builder(const dxf::Document& document, Scene& scene) : out_(scene, document), blocks_(document) {
    for (std::size_t i = 0; i < document.layerCount(); ++i) {
      const dxf::LayerRecord layer = document.layer(i);
      layers_[upper(layer.rawName())] = {!layer.frozen() && !layer.off(), indexColour(layer.color())};
    }
  }

  void entity(const dxf::Entity& e, const std::string& inheritedLayer, Rgb inheritedColour, int depth) {
    if (number(e, 60, 0) == 1.0) return;  // invisible
    std::string layer = upper(e.value(8, "0"));
    // Entities on layer 0 inside a block take the layer of the insertion.
    if (layer == "0" && !inheritedLayer.empty()) layer = inheritedLayer;
    const auto style = layers_.find(layer);
    const LayerStyle ls = style != layers_.end() ? style->second : LayerStyle{};
    if (!ls.shown) return;
    Rgb colour = ls.colour;
    if (const auto trueColour = e.tags.find(420)) {
      colour = static_cast<Rgb>(e.tags.integer(*trueColour).value_or(0xFFFFFF) & 0xFFFFFF);
    } else if (e.tags.find(62)) {
      const int index = std::abs(static_cast<int>(number(e, 62, 256)));
      if (index == 0) colour = inheritedColour;  // by block
      else if (index != 256) colour = indexColour(index);
    }
    out_.colour = colour;
    draw(e, layer, colour, depth);
  }

 private:
  void draw(const dxf::Entity& e, const std::string& layer, Rgb colour, int depth) {
    const std::string_view t = e.type;
    if (t == "LINE") {
      const Vec3 a = point(e, 10), b = point(e, 11);
      out_.path({a, b}, false, Affine{});
      out_.snap(a, SnapKind::Endpoint, Affine{});
      out_.snap(b, SnapKind::Endpoint, Affine{});
      out_.snap((a + b) * 0.5, SnapKind::Midpoint, Affine{});
    } else if (t == "LWPOLYLINE") {
      writeLightPolyline(out_, e);
    } else if (t == "POLYLINE") {
      writePolyline(out_, e);
    } else if (t == "CIRCLE" || t == "ARC") {
      const Affine ocs = objectSystem(extrusion(e));
      const Vec3 c = point(e, 10);
      const double r = number(e, 40, 0.0);
      double a0 = 0.0, a1 = 2 * std::numbers::pi;
      if (t == "ARC") {
        a0 = number(e, 50, 0.0) * kDegree;
        a1 = number(e, 51, 360.0) * kDegree;
        while (a1 <= a0) a1 += 2 * std::numbers::pi;
      }
      std::vector<Vec3> points;
      appendArc(points, c, r, a0, a1);
      out_.path(points, t == "CIRCLE", ocs);
      out_.snap(c, SnapKind::Centre, ocs);
      if (t == "ARC" && !points.empty()) {
        out_.snap(points.front(), SnapKind::Endpoint, ocs);
        out_.snap(points.back(), SnapKind::Endpoint, ocs);
      }
    } else if (t == "ELLIPSE") {
      writeEllipse(out_, e);
    } else if (t == "SPLINE") {
      writeSpline(out_, e);
    } else if (t == "POINT") {
      const Vec3 p = point(e, 10);
      out_.node(p, Affine{});
      out_.snap(p, SnapKind::Node, Affine{});
    } else if (t == "TEXT" || t == "ATTRIB" || t == "ATTDEF") {
      if (t != "ATTDEF") writeText(out_, e);
    } else if (t == "MTEXT") {
      writeMText(out_, e);
    } else if (t == "INSERT") {
      insert(e, layer, colour, depth);
      for (const dxf::Entity& attribute : e.children)
        if (attribute.type == "ATTRIB") entity(attribute, layer, colour, depth);
    } else if (t == "DIMENSION") {
      // A dimension is drawn by its anonymous block, which holds its lines, arrows and text in place.
      if (const dxf::Block* b = depth < kMaxBlockDepth ? blocks_.find(e.value(2)) : nullptr)
        blockContents(*b, Affine{}, layer, colour, depth + 1);
    } else if (t == "SOLID" || t == "TRACE" || t == "3DFACE") {
      const bool planar = t != "3DFACE";
      const Affine system = planar ? objectSystem(extrusion(e)) : Affine{};
      const Vec3 p1 = point(e, 10), p2 = point(e, 11), p3 = point(e, 12), p4 = point(e, 13, p3);
      // Solids store their corners in zig-zag order; a 3D face goes round.
      std::vector<Vec3> corners = planar ? std::vector<Vec3>{p1, p2, p4, p3} : std::vector<Vec3>{p1, p2, p3, p4};
      out_.path(corners, true, system, planar);
      for (const Vec3& c : corners) out_.snap(c, SnapKind::Endpoint, system);
    } else if (t == "HATCH") {
      writeHatch(out_, e);
    } else if (t == "IMAGE" || t == "WIPEOUT") {
      // Images are shown as their frame: the picture itself lives in a file beside the drawing.
      const Vec3 o = point(e, 10), u = point(e, 11), v = point(e, 12), size = point(e, 13, Vec3{1, 1, 0});
      const Vec3 du = u * size.x, dv = v * size.y;
      out_.path({o, o + du, o + du + dv, o + dv}, true, Affine{});
      out_.snap(o, SnapKind::Insertion, Affine{});
    } else if (t == "LEADER") {
      std::vector<Vec3> points;
      for (std::size_t i = 0; i < e.tags.size(); ++i) {
        if (e.tags.code(i) == 10) points.push_back({e.tags.number(i).value_or(0), 0, 0});
        if (e.tags.code(i) == 20 && !points.empty()) points.back().y = e.tags.number(i).value_or(0);
        if (e.tags.code(i) == 30 && !points.empty()) points.back().z = e.tags.number(i).value_or(0);
      }
      out_.path(points, false, Affine{});
      for (const Vec3& p : points) out_.snap(p, SnapKind::Endpoint, Affine{});
    }
  }

  void insert(const dxf::Entity& e, const std::string& layer, Rgb colour, int depth) {
    const dxf::Block* b = depth < kMaxBlockDepth ? blocks_.find(e.value(2)) : nullptr;
    const Affine ocs = objectSystem(extrusion(e));
    const Vec3 at = point(e, 10);
    out_.snap(at, SnapKind::Insertion, ocs);
    if (b == nullptr) return;
    const double sx = number(e, 41, 1.0), sy = number(e, 42, 1.0), sz = number(e, 43, 1.0);
    const double rotation = number(e, 50, 0.0) * kDegree;
    const long long columns = std::max(1LL, static_cast<long long>(number(e, 70, 1)));
    const long long rows = std::max(1LL, static_cast<long long>(number(e, 71, 1)));
    const bool array = columns * rows <= kMaxArrayCopies;
    const double dx = number(e, 44, 0.0), dy = number(e, 45, 0.0);
    const double c = std::cos(rotation), s = std::sin(rotation);
    const Vec3 base = point(b->begin, 10);
    for (long long row = 0; row < (array ? rows : 1); ++row) {
      for (long long column = 0; column < (array ? columns : 1); ++column) {
        const double ox = static_cast<double>(column) * dx, oy = static_cast<double>(row) * dy;
        // Block coordinates: shifted by the base point, scaled, turned, moved to the insertion point (plus the
        // array offset in the turned frame), then out of the insertion's object system.
        Affine local{{c * sx, s * sx, 0}, {-s * sy, c * sy, 0}, {0, 0, sz}, {}};
        local.t = Vec3{at.x + ox * c - oy * s, at.y + ox * s + oy * c, at.z} - local.applyVector(base);
        blockContents(*b, local.then(ocs), layer, colour, depth + 1);
      }
    }
  }

  void blockContents(const dxf::Block& b, const Affine& local, const std::string& layer, Rgb colour, int depth) {
    const Affine outer = out_.placement;
    out_.placement = local.then(outer);
    for (const dxf::Entity& inner : b.entities) entity(inner, layer, colour, depth);
    out_.placement = outer;
  }

  SceneWriter out_;
  BlockLibrary blocks_;
  std::unordered_map<std::string, LayerStyle> layers_;
};

}  // namespace

Scene buildScene(const dxf::Document& document) {
  Scene scene;
  Builder builder(document, scene);
  for (const dxf::Entity* e : document.modelSpace()) {
    builder.entity(*e, {}, 0xFFFFFF, 0);
    ++scene.entities;
  }
  return scene;
}

}  // namespace host::gui
