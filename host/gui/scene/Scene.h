// What the drawing view draws: the model space of the working drawing turned into plain geometry (lines, filled
// areas, texts) and the points a pick can snap to.
//
// Survey drawings sit at coordinates such as 2,561,234.567 / 5,634,012.345. Every coordinate here is relative to
// one local origin near the drawing (kept in double precision), so that drawing and snapping at millimetre zoom
// never lose the digits that a screen transformation in single precision, or around the world origin, would.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace host::gui {

struct Vec2 {
  double x = 0.0, y = 0.0;
};

struct Box {
  double minX = std::numeric_limits<double>::infinity(), minY = std::numeric_limits<double>::infinity();
  double maxX = -std::numeric_limits<double>::infinity(), maxY = -std::numeric_limits<double>::infinity();

  bool empty() const { return minX > maxX; }
  void add(Vec2 p) {
    if (p.x < minX) minX = p.x;
    if (p.x > maxX) maxX = p.x;
    if (p.y < minY) minY = p.y;
    if (p.y > maxY) maxY = p.y;
  }
  void add(const Box& b) {
    if (b.empty()) return;
    add(Vec2{b.minX, b.minY});
    add(Vec2{b.maxX, b.maxY});
  }
  bool overlaps(const Box& b) const {
    return !(b.minX > maxX || b.maxX < minX || b.minY > maxY || b.maxY < minY);
  }
};

using Rgb = std::uint32_t;  // 0xRRGGBB

// A run of connected vertices: a line, a polyline, a tessellated curve or a filled outline.
struct Path {
  std::uint32_t first = 0;  // into Scene::vertices
  std::uint32_t count = 0;
  Rgb colour = 0xFFFFFF;
  bool closed = false;
  bool filled = false;  // a solid, a trace, a solid-filled hatch: the area is painted
  Box box;
};

// A text line: drawn with the screen font when it is large enough to read, as its base line otherwise.
struct Label {
  std::wstring text;
  Vec2 at;                // left end of the base line
  double height = 1.0;    // in drawing units
  double rotation = 0.0;  // radians, counter-clockwise
  Rgb colour = 0xFFFFFF;
  Box box;
};

// A single point (POINT entities): drawn as a small cross.
struct Node {
  Vec2 at;
  Rgb colour = 0xFFFFFF;
};

enum class SnapKind : std::uint8_t { Endpoint, Midpoint, Centre, Insertion, Node };

// A place a pick can snap to, with the full 3D coordinate it answers (relative to the local origin).
struct SnapPoint {
  Vec2 at;
  double z = 0.0;
  SnapKind kind = SnapKind::Endpoint;
};

struct Scene {
  Vec2 origin;  // world coordinates of the local origin
  std::vector<Vec2> vertices;
  std::vector<Path> paths;
  std::vector<Label> labels;
  std::vector<Node> nodes;
  std::vector<SnapPoint> snaps;
  Box extents;  // local coordinates; empty for an empty drawing
  std::size_t entities = 0;  // model-space entities drawn

  Vec2 toWorld(Vec2 local) const { return {local.x + origin.x, local.y + origin.y}; }
  Vec2 toLocal(Vec2 world) const { return {world.x - origin.x, world.y - origin.y}; }
};

}  // namespace host::gui
