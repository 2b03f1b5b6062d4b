#include "host/gui/scene/SceneWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::gui {

double number(const dxf::Entity& entity, int code, double fallback) {
  const auto i = entity.tags.find(code);
  if (!i) return fallback;
  const std::optional<double> value = entity.tags.number(*i);
  return value && std::isfinite(*value) ? *value : fallback;
}

Vec3 point(const dxf::Entity& entity, int code, Vec3 fallback) {
  return {number(entity, code, fallback.x), number(entity, code + 10, fallback.y),
          number(entity, code + 20, fallback.z)};
}

Vec3 extrusion(const dxf::Entity& entity) { return point(entity, 210, Vec3{0, 0, 1}); }

Vec2 SceneWriter::local(Vec3 world) {
  if (!haveOrigin_) {
    // A round origin near the first coordinate keeps every local coordinate small.
    scene_.origin = {std::round(world.x / 1000.0) * 1000.0, std::round(world.y / 1000.0) * 1000.0};
    haveOrigin_ = true;
  }
  return scene_.toLocal({world.x, world.y});
}

namespace {

bool finite(Vec3 p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

// Coordinates beyond this are garbage in a drawing (a survey grid spans a few million metres); they would
// only push the extents out to where nothing is.
constexpr double kFarAway = 1e12;
bool plausible(Vec3 p) { return finite(p) && std::fabs(p.x) < kFarAway && std::fabs(p.y) < kFarAway; }

}  // namespace

void SceneWriter::path(const std::vector<Vec3>& points, bool closed, const Affine& within, bool filled) {
  if (points.empty()) return;
  Path p;
  p.first = static_cast<std::uint32_t>(scene_.vertices.size());
  for (const Vec3& q : points) {
    const Vec3 world = placement.apply(within.apply(q));
    if (!plausible(world)) continue;
    const Vec2 v = local(world);
    scene_.vertices.push_back(v);
    p.box.add(v);
  }
  p.count = static_cast<std::uint32_t>(scene_.vertices.size()) - p.first;
  if (p.count == 0) return;
  p.colour = colour;
  p.closed = closed && p.count > 2;
  p.filled = filled && p.count > 2;
  scene_.extents.add(p.box);
  scene_.paths.push_back(p);
}

void SceneWriter::label(const std::wstring& text, Vec3 at, double height, double rotation, const Affine& within) {
  if (text.empty() || !(height > 0.0) || !std::isfinite(height) || !std::isfinite(rotation)) return;
  const Affine whole = within.then(placement);
  const Vec3 world = whole.apply(at);
  if (!plausible(world)) return;
  // Direction and size through the whole chain (a scaled or mirrored block scales and turns its texts).
  const Vec3 along = whole.applyVector(Vec3{std::cos(rotation), std::sin(rotation), 0});
  const Vec3 up = whole.applyVector(Vec3{-std::sin(rotation), std::cos(rotation), 0});
  Label l;
  l.text = text;
  l.at = local(world);
  l.height = height * std::hypot(up.x, up.y);
  l.rotation = std::atan2(along.y, along.x);
  l.colour = colour;
  if (!(l.height > 0.0)) return;
  // A text line is about 0.6 of its height wide per character; the box only decides what is culled.
  const double width = 0.6 * l.height * static_cast<double>(text.size());
  const double c = std::cos(l.rotation), s = std::sin(l.rotation);
  for (Vec2 corner : {Vec2{0, 0}, Vec2{width, 0}, Vec2{0, l.height}, Vec2{width, l.height}})
    l.box.add(Vec2{l.at.x + corner.x * c - corner.y * s, l.at.y + corner.x * s + corner.y * c});
  scene_.extents.add(l.box);
  scene_.labels.push_back(std::move(l));
}

void SceneWriter::node(Vec3 at, const Affine& within) {
  const Vec3 world = placement.apply(within.apply(at));
  if (!plausible(world)) return;
  const Vec2 v = local(world);
  scene_.extents.add(v);
  scene_.nodes.push_back({v, colour});
}

void SceneWriter::snap(Vec3 at, SnapKind kind, const Affine& within) {
  const Vec3 world = placement.apply(within.apply(at));
  if (!plausible(world)) return;
  scene_.snaps.push_back({local(world), world.z, kind});
}

void appendArc(std::vector<Vec3>& out, Vec3 centre, double radius, double a0, double a1) {
  if (!std::isfinite(a0) || !std::isfinite(a1) || !(radius > 0.0) || !std::isfinite(radius)) return;
  // One segment per 5 degrees: round at any zoom a survey plan is looked at, cheap to draw.
  const double sweep = a1 - a0;
  const int steps = std::max(2, std::min(720, static_cast<int>(std::ceil(sweep / (std::numbers::pi / 36.0)))));
  for (int i = 0; i <= steps; ++i) {
    const double a = a0 + sweep * i / steps;
    out.push_back({centre.x + radius * std::cos(a), centre.y + radius * std::sin(a), centre.z});
  }
}

void appendBulge(std::vector<Vec3>& out, Vec3 from, Vec3 to, double bulge) {
  out.push_back(from);
  if (bulge == 0.0 || !std::isfinite(bulge)) return;
  const double chord = std::hypot(to.x - from.x, to.y - from.y);
  if (chord <= 0.0) return;
  const double included = 4.0 * std::atan(bulge);
  const double radius = chord / (2.0 * std::sin(std::fabs(included) / 2.0));
  // The centre lies on the chord's perpendicular bisector, on the left for a positive bulge.
  const double mx = (from.x + to.x) / 2, my = (from.y + to.y) / 2;
  const double toCentre = radius * std::cos(std::fabs(included) / 2.0) * (bulge > 0 ? 1.0 : -1.0);
  const double nx = -(to.y - from.y) / chord, ny = (to.x - from.x) / chord;
  const Vec3 centre{mx + nx * toCentre, my + ny * toCentre, from.z};
  double a0 = std::atan2(from.y - centre.y, from.x - centre.x);
  double a1 = a0 + included;
  std::vector<Vec3> arc;
  if (included > 0) {
    appendArc(arc, centre, radius, a0, a1);
  } else {
    appendArc(arc, centre, radius, a1, a0);
    std::reverse(arc.begin(), arc.end());
  }
  // First and last points are the vertices themselves.
  if (arc.size() > 2) out.insert(out.end(), arc.begin() + 1, arc.end() - 1);
}

}  // namespace host::gui
