// World-coordinate entities (points, lines, rays, 3D faces, splines) and the conic ones (circles, arcs,
// ellipses), with solids and traces, whose corners lie in their object coordinate system.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

// Reads and plans the point at index `x` when it exists (kNone: nothing to do).
template <typename F>
bool planPointIfPresent(TagList& tags, std::size_t x, Edits& edits, F&& map, double zDefault = 0.0) {
  if (x == kNone) return true;
  Vec3 p;
  bool hasZ = false;
  if (!readPoint(tags, x, p, hasZ, zDefault)) return false;
  // A result that overflowed is caught with every other number before anything is written.
  edits.setPoint(tags, x, map(p), hasZ);
  return true;
}

// Points and lines are world entities, but their thickness runs along the extrusion, which therefore turns and
// stretches as a direction.
bool planWorldThickness(TagList& tags, const CodeIndex& idx, const Context& c) {
  const std::size_t th = idx[39], ex = idx[210];
  if (th == kNone && ex == kNone) return true;
  Vec3 extrusion;
  double thickness = 0.0;
  if (!readOptionalVector(tags, ex, kWorldZ, extrusion) || !readOptional(tags, th, 0.0, thickness)) return false;
  const Vec3 unit = extrusion.normalized();
  if (unit.lengthSquared() == 0.0) return false;
  const Vec3 turned = c.m.direction(unit);
  const double stretch = turned.length();
  Vec3 newExtrusion = turned * (1.0 / stretch);
  if (Ocs::nearWorldZ(newExtrusion)) newExtrusion = kWorldZ;
  if (th != kNone) c.edits.set(tags, th, thickness * stretch);
  planExtrusion(tags, ex, sectionEnd(tags, idx[10] != kNone ? idx[10] : 0), newExtrusion, c.edits);
  return true;
}

// Counter-clockwise span from start to end in degrees, in [0, 360]; equal angles span 0, angles that differ by
// whole turns span 360.
double arcSpanDeg(double start, double end) {
  auto wrap = [](double a) { return a - 360.0 * std::floor(a / 360.0); };
  if (std::fabs(start - end) <= 1e-13) return 0.0;
  start = wrap(start);
  if (std::fabs(start - wrap(end)) <= 1e-13) return 360.0;
  if (std::fabs(end - 360.0) > 1e-13) end = wrap(end);
  if (end < start) end += 360.0;
  return end - start;
}

bool nearlyEqual(double a, double b, double rel) {
  return std::fabs(a - b) <= rel * std::fmax(std::fabs(a), std::fabs(b));
}

// The arc's start and end angles in its new plane, still counter-clockwise about the new extrusion.
void arcAngles(const OcsTransform& ocs, double& start, double& end) {
  const double span = arcSpanDeg(start, end);
  const double newStart = ocs.angleDeg(start);
  const double newEnd = ocs.angleDeg(end);
  double oldSpan = span, newSpan = 0.0;
  if (nearlyEqual(span, 180.0, 1e-9)) {
    // A half circle reads the same both ways round; a probe one radian further decides.
    oldSpan = kRadToDeg;
    newSpan = arcSpanDeg(newStart, ocs.angleDeg(start + kRadToDeg));
  } else {
    newSpan = arcSpanDeg(newStart, newEnd);
  }
  if (nearlyEqual(oldSpan, newSpan, 1e-8)) {
    start = newStart;
    end = newEnd;
  } else {
    start = newEnd;
    end = newStart;
  }
}

}  // namespace

TransformStatus transformPoint(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  if (!planPointIfPresent(t, idx[10], c.edits, [&](const Vec3& p) { return c.m.point(p); })) return S::InvalidData;
  return planWorldThickness(t, idx, c) ? S::Ok : S::InvalidData;
}

TransformStatus transformLine(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  auto point = [&](const Vec3& p) { return c.m.point(p); };
  if (!planPointIfPresent(t, idx[10], c.edits, point) || !planPointIfPresent(t, idx[11], c.edits, point))
    return S::InvalidData;
  return planWorldThickness(t, idx, c) ? S::Ok : S::InvalidData;
}

TransformStatus transformRay(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  bool ok = planPointIfPresent(t, idx[10], c.edits, [&](const Vec3& p) { return c.m.point(p); });
  ok = ok && planPointIfPresent(t, idx[11], c.edits, [&](const Vec3& d) { return c.m.direction(d).normalized(); });
  return ok ? S::Ok : S::InvalidData;
}

TransformStatus transformFace(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  auto point = [&](const Vec3& p) { return c.m.point(p); };
  for (int code = 10; code <= 13; ++code)
    if (!planPointIfPresent(t, idx[code], c.edits, point)) return S::InvalidData;
  return S::Ok;
}

TransformStatus transformSpline(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const std::size_t end = CodeIndex(t).end();
  for (std::size_t i = 0; i < end; ++i) {
    const int code = t.code(i);
    if (code < 10 || (code > 13 && code != 210)) continue;
    Vec3 v;
    bool hasZ = false;
    if (!readPoint(t, i, v, hasZ)) return S::InvalidData;
    Vec3 r;
    if (code <= 11)
      r = c.m.point(v);  // control and fit points
    else if (code <= 13)
      r = c.m.direction(v);  // start and end tangents keep their magnitude relation to the curve
    else
      r = c.m.normal(v);  // the normal of a planar spline
    c.edits.setPoint(t, i, r, hasZ);
    i += hasZ ? 2 : 1;
  }
  return S::Ok;
}

TransformStatus transformSolid(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  double thickness = 0.0;
  if (!readExtrusion(t, idx, extrusion) || !readOptional(t, idx[39], 0.0, thickness))
    return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  for (int code = 10; code <= 13; ++code)
    if (!planPointIfPresent(t, idx[code], c.edits, [&](const Vec3& p) { return ocs.vertex(p); }))
      return S::InvalidData;
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  planExtrusion(t, idx[210], sectionEnd(t, idx[10] != kNone ? idx[10] : 0), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

namespace {

// Center, radius, thickness and extrusion of circles and arcs; the angles are the arc's own business.
TransformStatus planCircle(TagList& t, const CodeIndex& idx, const Context& c, const OcsTransform& ocs) {
  double radius = 0.0, thickness = 0.0;
  if (!readOptional(t, idx[40], 0.0, radius) || !readOptional(t, idx[39], 0.0, thickness)) return S::InvalidData;
  if (!planPointIfPresent(t, idx[10], c.edits, [&](const Vec3& p) { return ocs.vertex(p); })) return S::InvalidData;
  if (idx.has(40)) c.edits.set(t, idx[40], ocs.length({radius, 0.0, 0.0}));
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  // The extrusion belongs with the circle data, ahead of an arc's angles.
  const std::size_t anchor = idx.has(40) ? idx[40] : (idx.has(10) ? idx[10] : 0);
  planExtrusion(t, idx[210], sectionEnd(t, anchor), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

}  // namespace

TransformStatus transformCircle(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  if (!readExtrusion(t, idx, extrusion)) return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  return planCircle(t, idx, c, ocs);
}

TransformStatus transformArc(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  double start = 0.0, end = 0.0;
  if (!readExtrusion(t, idx, extrusion) || !readOptional(t, idx[50], 0.0, start) ||
      !readOptional(t, idx[51], 0.0, end))
    return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  if (const S s = planCircle(t, idx, c, ocs); s != S::Ok) return s;
  // A full circle keeps its angles: turning them would only move the seam.
  if (!nearlyEqual(arcSpanDeg(start, end), 360.0, 1e-9)) {
    arcAngles(ocs, start, end);
    // Arcs written by sparse programs may leave out a zero angle; it joins the arc's own data.
    const std::size_t arcEnd =
        idx.has(51) ? sectionEnd(t, idx[51]) : (idx.has(50) ? sectionEnd(t, idx[50]) : idx.end());
    if (idx.has(50))
      c.edits.set(t, idx[50], start);
    else if (start != 0.0)
      c.edits.insert(t, arcEnd, 50, start);
    if (idx.has(51))
      c.edits.set(t, idx[51], end);
    else if (end != 0.0)
      c.edits.insert(t, arcEnd, 51, end);
  }
  return S::Ok;
}

TransformStatus transformEllipse(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 center, major, extrusion;
  bool centerZ = false, majorZ = false;
  double ratio = 1.0;
  if (!idx.has(10) || !idx.has(11) || !readPoint(t, idx[10], center, centerZ) ||
      !readPoint(t, idx[11], major, majorZ) || !readExtrusion(t, idx, extrusion) ||
      !readOptional(t, idx[40], 1.0, ratio) || major.lengthSquared() == 0.0)
    return S::InvalidData;
  // A similarity keeps the axes perpendicular, their ratio and the parameters of the end points; only the
  // plane, which follows the turned axes, may flip over.
  const Vec3 minor = extrusion.normalized().cross(major).normalized() * (major.length() * ratio);
  const Vec3 newMajor = c.m.direction(major);
  Vec3 newExtrusion = newMajor.cross(c.m.direction(minor)).normalized();
  if (newExtrusion.lengthSquared() == 0.0) newExtrusion = c.m.normal(extrusion);
  if (Ocs::nearWorldZ(newExtrusion)) newExtrusion = kWorldZ;
  c.edits.setPoint(t, idx[10], c.m.point(center), centerZ);
  c.edits.setPoint(t, idx[11], newMajor, majorZ);
  planExtrusion(t, idx[210], sectionEnd(t, idx[11]), newExtrusion, c.edits);
  return S::Ok;
}

}  // namespace dxf::xform
