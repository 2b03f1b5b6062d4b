// Raster images, wipeouts and underlays (PDF, DWF, DGN). Their pixels or sheets are mapped by an insertion
// point and two axes; the clip boundary lies in the picture's own coordinates and stays as it is. A
// picture cannot be sheared, so they take only a similarity.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

}  // namespace

TransformStatus transformImage(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  if (!idx.has(10) || !idx.has(11) || !idx.has(12)) return S::InvalidData;
  Vec3 insert, u, v;
  bool insertZ = false, uZ = false, vZ = false;
  if (!readPoint(t, idx[10], insert, insertZ) || !readPoint(t, idx[11], u, uZ) || !readPoint(t, idx[12], v, vZ))
    return S::InvalidData;
  if (u.lengthSquared() == 0.0 || v.lengthSquared() == 0.0) return S::InvalidData;
  // The corner of the first pixel and the size and direction of one pixel along each axis.
  c.edits.setPoint(t, idx[10], c.m.point(insert), insertZ);
  c.edits.setPoint(t, idx[11], c.m.direction(u), uZ);
  c.edits.setPoint(t, idx[12], c.m.direction(v), vZ);
  return S::Ok;
}

TransformStatus transformUnderlay(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion, insert;
  bool insertZ = false;
  double rotation = 0.0;
  if (!readExtrusion(t, idx, extrusion) || !readOptional(t, idx[50], 0.0, rotation)) return S::InvalidData;
  if (idx.has(10) && !readPoint(t, idx[10], insert, insertZ)) return S::InvalidData;
  // A mirror turns the sheet over: it is then seen from behind, its normal reversed, as a mirrored text is.
  const OcsTransform ocs(c.m, extrusion);
  if (idx.has(10)) c.edits.setPoint(t, idx[10], c.m.point(insert), insertZ);
  for (int code : {41, 42, 43}) {
    if (!idx.has(code)) continue;
    double s = 0.0;
    if (!readNumber(t, idx[code], s)) return S::InvalidData;
    c.edits.set(t, idx[code], s * c.kind.scale);
  }
  // Missing rotation and normal go where a CAD program writes them: after the scale factors, before the
  // display flags and the clip boundary.
  std::size_t after = idx.has(10) ? idx[10] + (insertZ ? 3 : 2) : idx.end();
  for (int code : {41, 42, 43, 50})
    if (idx.has(code) && idx[code] + 1 > after) after = idx[code] + 1;
  const double turned = ocs.angleDeg(rotation);
  if (idx.has(50))
    c.edits.set(t, idx[50], turned);
  else if (turned != 0.0)
    c.edits.insert(t, after, 50, turned);
  planExtrusion(t, idx[210], after, ocs.newExtrusion(), c.edits);
  return S::Ok;
}

}  // namespace dxf::xform
