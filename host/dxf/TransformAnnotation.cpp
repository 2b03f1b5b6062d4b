// Dimensions and leaders: definition points in world and object coordinates, angles in the dimension's plane.
// Their arrows and text sizes come from the dimension style, so only a similarity keeps them meaningful.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

bool planPoint(TagList& t, std::size_t i, Edits& edits, const auto& map) {
  if (i == kNone) return true;
  Vec3 p;
  bool hasZ = false;
  if (!readPoint(t, i, p, hasZ)) return false;
  edits.setPoint(t, i, map(p), hasZ);
  return true;
}

constexpr long long kAngular = 2, kAngular3Point = 5;

}  // namespace

TransformStatus transformDimension(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  return planDimension(e.tags, kNone, c);
}

TransformStatus planDimension(TagList& t, std::size_t to, const Context& c) {
  const CodeIndex idx(t, 0, to);
  Vec3 extrusion;
  if (!readExtrusion(t, idx, extrusion))
    return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  auto inPlane = [&](const Vec3& p) { return ocs.vertex(p); };
  auto inWorld = [&](const Vec3& p) { return c.m.point(p); };
  // Text middle point, clone insertion point and the arc point of angular dimensions are in the plane;
  // the definition points proper are world points.
  for (int code : {11, 12, 16})
    if (!planPoint(t, idx[code], c.edits, inPlane)) return S::InvalidData;
  for (int code : {10, 13, 14, 15})
    if (!planPoint(t, idx[code], c.edits, inWorld)) return S::InvalidData;
  // Text rotation, horizontal direction and the angle of a rotated dimension.
  for (int code : {53, 51, 50}) {
    if (!idx.has(code)) continue;
    double a = 0.0;
    if (!readNumber(t, idx[code], a)) return S::InvalidData;
    c.edits.set(t, idx[code], ocs.angleDeg(a));
  }
  // The measured value grows with the drawing unless it is an angle; so does a radius leader's length.
  const long long type = idx.has(70) ? (t.integer(idx[70]).value_or(0) & 0x0f) : 0;
  if (type != kAngular && type != kAngular3Point && !planScaled(t, idx[42], c.kind.scale, c.edits))
    return S::InvalidData;
  if (!planScaled(t, idx[40], c.kind.scale, c.edits)) return S::InvalidData;
  planExtrusion(t, idx[210], idx.has(10) ? sectionEnd(t, idx[10]) : idx.end(), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

TransformStatus transformLeader(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 normal, horizontal;
  if (!readExtrusion(t, idx, normal) ||
      !readOptionalVector(t, idx[211], {1.0, 0.0, 0.0}, horizontal))
    return S::InvalidData;
  if (!planWorldPoints(t, 0, idx.end(), 10, c.m, c.edits)) return S::InvalidData;
  const OcsTransform ocs(c.m, normal);
  planExtrusion(t, idx[210], idx.end(), ocs.newExtrusion(), c.edits);
  const Vec3 newHorizontal = c.m.direction(horizontal).normalized();
  if (idx.has(211))
    c.edits.setPoint(t, idx[211], newHorizontal, pointHasZ(t, idx[211]));
  else if ((newHorizontal - Vec3{1.0, 0.0, 0.0}).length() > 1e-12)
    c.edits.insertPoint(t, idx.end(), 211, newHorizontal);
  // Offsets of the attached block and annotation are world displacements.
  auto displacement = [&](const Vec3& d) { return c.m.direction(d); };
  if (!planPoint(t, idx[212], c.edits, displacement) || !planPoint(t, idx[213], c.edits, displacement))
    return S::InvalidData;
  // Annotation height and width.
  if (!planScaled(t, idx[40], c.kind.scale, c.edits) || !planScaled(t, idx[41], c.kind.scale, c.edits))
    return S::InvalidData;
  return S::Ok;
}

}  // namespace dxf::xform
