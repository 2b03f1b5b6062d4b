// Entities placed at one point: geometric tolerance frames, shapes, lights and OLE frames.
#include "host/dxf/TransformTypes.h"

#include <string_view>

namespace dxf::xform {

namespace {

using S = TransformStatus;

}  // namespace

TransformStatus transformTolerance(Entity& e, const Context& c) {
  // The frame's size comes from the dimension style, as with dimensions: only a similarity keeps it fitting.
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion, direction;
  if (!readExtrusion(t, idx, extrusion) || !readOptionalVector(t, idx[11], {1.0, 0.0, 0.0}, direction) ||
      direction.lengthSquared() == 0.0)
    return S::InvalidData;
  if (!planWorldPoint(t, idx[10], c.m, c.edits)) return S::InvalidData;
  const std::size_t ownEnd = idx.has(10) ? sectionEnd(t, idx[10]) : idx.end();
  const Vec3 newDirection = c.m.direction(direction).normalized();
  if (idx.has(11))
    c.edits.setPoint(t, idx[11], newDirection, pointHasZ(t, idx[11]));
  else if ((newDirection - Vec3{1.0, 0.0, 0.0}).length() > 1e-12)
    c.edits.insertPoint(t, ownEnd, 11, newDirection);
  // A mirror shows the frame from behind, as it does a text.
  planExtrusion(t, idx[210], ownEnd, OcsTransform(c.m, extrusion).newExtrusion(), c.edits);
  return S::Ok;
}

TransformStatus transformShape(Entity& e, const Context& c) {
  // A shape is drawn like a text character: it takes only a similarity.
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  double rotation = 0.0, size = 0.0, thickness = 0.0;
  if (!readExtrusion(t, idx, extrusion) || !readOptional(t, idx[50], 0.0, rotation) ||
      !readOptional(t, idx[40], 0.0, size) || !readOptional(t, idx[39], 0.0, thickness))
    return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  // The insertion point is a world point, unlike a text's.
  if (!planWorldPoint(t, idx[10], c.m, c.edits)) return S::InvalidData;
  const std::size_t ownEnd = idx.has(10) ? sectionEnd(t, idx[10]) : idx.end();
  if (idx.has(40)) c.edits.set(t, idx[40], size * ocs.length(fromAngleDeg(rotation + 90.0)));
  const double turned = ocs.angleDeg(rotation);
  if (idx.has(50))
    c.edits.set(t, idx[50], turned);
  else if (turned != 0.0)
    c.edits.insert(t, ownEnd, 50, turned);
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  planExtrusion(t, idx[210], ownEnd, ocs.newExtrusion(), c.edits);
  return S::Ok;
}

TransformStatus transformLight(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 position, target;
  if (!readOptionalVector(t, idx[10], {}, position) || !readOptionalVector(t, idx[11], {}, target))
    return S::InvalidData;
  // The distances where the light starts and stops fading are measured along the beam.
  Vec3 beam = target - position;
  if (beam.lengthSquared() == 0.0) beam = {1.0, 0.0, 0.0};
  const double stretch = c.m.direction(beam.normalized()).length();
  if (!planWorldPoint(t, idx[10], c.m, c.edits) || !planWorldPoint(t, idx[11], c.m, c.edits) ||
      !planScaled(t, idx[41], stretch, c.edits) || !planScaled(t, idx[42], stretch, c.edits))
    return S::InvalidData;
  return S::Ok;
}

TransformStatus transformOleFrame(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  // Upper left and lower right corner.
  if (!idx.has(10) || !idx.has(11) || !planWorldPoint(t, idx[10], c.m, c.edits) ||
      !planWorldPoint(t, idx[11], c.m, c.edits))
    return S::InvalidData;
  // The frame's width and height are repeated in the extended data, each after its key (41, 42).
  const std::size_t x = xdataStart(t);
  for (std::size_t i = x; i + 1 < t.size(); ++i) {
    if (t.code(i) != 1070 || t.code(i + 1) != 1040) continue;
    const long long key = t.integer(i).value_or(0);
    if (key != 41 && key != 42) continue;
    if (!planScaled(t, i + 1, c.kind.scale, c.edits)) return S::InvalidData;
  }
  return S::Ok;
}

}  // namespace dxf::xform
