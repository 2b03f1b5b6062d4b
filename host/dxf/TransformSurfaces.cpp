// Subdivision meshes, helixes and multilines: world vertices with the sizes that belong to them.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

}  // namespace

TransformStatus transformMesh(Entity& e, const Context& c) {
  // Vertices are world points; faces, edges and creases refer to them by number and stay.
  TagList& t = e.tags;
  const std::size_t own = subclassMarker(t, "AcDbSubDMesh");
  if (own == kNone) return S::InvalidData;
  return planWorldPoints(t, own + 1, CodeIndex(t, own).end(), 10, c.m, c.edits) ? S::Ok : S::InvalidData;
}

TransformStatus transformHelix(Entity& e, const Context& c) {
  // A helix winds on a circle: only a similarity keeps it one.
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const std::size_t own = subclassMarker(t, "AcDbHelix");
  if (own == kNone) return S::InvalidData;
  // The curve itself is a spline of world control points; the spline's reader stops at nothing, so the
  // helix's own axis base (10), start point (11) and axis (12) are planned by it as points and a direction.
  if (const S s = transformSpline(e, c); s != S::Ok) return s;
  const CodeIndex idx(t, own + 1);
  Vec3 axis;
  if (!readOptionalVector(t, idx[12], kWorldZ, axis) || axis.lengthSquared() == 0.0) return S::InvalidData;
  if (idx.has(12)) c.edits.setPoint(t, idx[12], c.m.direction(axis).normalized(), pointHasZ(t, idx[12]));
  // Radius and the height of one turn grow with the drawing; the number of turns stays.
  if (!planScaled(t, idx[40], c.kind.scale, c.edits) || !planScaled(t, idx[42], c.kind.scale, c.edits))
    return S::InvalidData;
  // A mirror turns a right-handed helix into a left-handed one.
  if (idx.has(290) && mirrors(c.m)) {
    const long long handed = t.integer(idx[290]).value_or(1);
    c.edits.set(t, idx[290], handed != 0 ? 0.0 : 1.0);
  }
  return S::Ok;
}

TransformStatus transformMLine(Entity& e, const Context& c) {
  // Element offsets come from the multiline style, times the scale: only a similarity keeps them parallel.
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  if (!readExtrusion(t, idx, extrusion)) return S::InvalidData;
  // A mirror turns the plane over with the drawing, so the style's left side stays left of the line and
  // the scale keeps its sign.
  const OcsTransform ocs(c.m, extrusion);
  for (std::size_t i = 0; i < idx.end(); ++i) {
    const int code = t.code(i);
    if (code >= 10 && code <= 13) {
      // Start point and vertices (10, 11), segment and miter directions (12, 13).
      Vec3 v;
      bool hasZ = false;
      if (!readPoint(t, i, v, hasZ)) return S::InvalidData;
      const Vec3 r = code <= 11 ? c.m.point(v) : c.m.direction(v).normalized();
      c.edits.setPoint(t, i, r, hasZ);
      i += hasZ ? 2 : 1;
    } else if (code == 40 || code == 41 || code == 42) {
      // Scale, element parameters (distance along the miter, then dash lengths), area fill parameters.
      if (!planScaled(t, i, c.kind.scale, c.edits)) return S::InvalidData;
    }
  }
  planExtrusion(t, idx[210], idx.end(), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

}  // namespace dxf::xform
