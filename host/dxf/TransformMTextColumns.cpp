// What a multi-line text carries besides its main data: the direction it runs in when the file leaves it
// out, and the embedded object of newer files that repeats its position and direction beside its columns.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

Vec3 mtextDefaultDirection(const Vec3& extrusion) {
  const Vec3 n = extrusion.normalized();
  // World x with its part along the normal taken out. Across a plane that nearly contains world x the
  // projection is too short to trust; the plane's own x axis serves there.
  const Vec3 projected = Vec3{1.0, 0.0, 0.0} - n * n.x;
  if (projected.length() < 1.0 / 64.0) return Ocs(n).ux();
  return projected.normalized();
}

TransformStatus planMTextEmbedded(TagList& t, std::size_t marker, const Context& c) {
  // The object runs up to the next embedded object or the extended data.
  std::size_t end = marker + 1;
  while (end < t.size() && t.code(end) != 101 && t.code(end) < 1000) ++end;
  for (std::size_t i = marker + 1; i < end; ++i) {
    const int code = t.code(i);
    if (code == 10 || code == 11) {
      Vec3 v;
      bool hasZ = false;
      if (!readPoint(t, i, v, hasZ)) return TransformStatus::InvalidData;
      // 10 is the direction the text runs in, 11 the insertion point.
      const Vec3 r = code == 10 ? c.m.direction(v).normalized() : c.m.point(v);
      c.edits.setPoint(t, i, r, hasZ);
      i += hasZ ? 2 : 1;
    } else if (code >= 40 && code <= 46) {
      // Reference width and height, extents, column width, gutter and column heights.
      double v = 0.0;
      if (!readNumber(t, i, v)) return TransformStatus::InvalidData;
      c.edits.set(t, i, v * c.kind.scale);
    }
  }
  return TransformStatus::Ok;
}

}  // namespace dxf::xform
