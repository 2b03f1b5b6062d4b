// Arc length and jogged large radius dimensions: the data every dimension shares, then a subclass of their
// own with world points and, for arc lengths, the angles of the arc's ends in the dimension's plane.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

bool planWorldPointsOf(TagList& t, const CodeIndex& idx, std::initializer_list<int> codes, const Context& c) {
  for (int code : codes)
    if (!planWorldPoint(t, idx[code], c.m, c.edits)) return false;
  return true;
}

}  // namespace

TransformStatus transformArcDimension(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const std::size_t own = subclassMarker(t, "AcDbArcDimension");
  if (own == kNone) return S::InvalidData;
  if (const S s = planDimension(t, own, c); s != S::Ok) return s;
  const CodeIndex shared(t, 0, own);
  Vec3 extrusion;
  if (!readExtrusion(t, shared, extrusion)) return S::InvalidData;
  // The measured arc length grows with the drawing whatever dimension type number the writer used.
  if (shared.has(42)) {
    double length = 0.0;
    if (!readNumber(t, shared[42], length)) return S::InvalidData;
    c.edits.set(t, shared[42], length * c.kind.scale);
  }
  const CodeIndex idx(t, own + 1);
  // First and second arc end, arc centre, and the two points of the leader to a partial arc.
  if (!planWorldPointsOf(t, idx, {13, 14, 15, 16, 17}, c)) return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  for (int code : {40, 41}) {
    if (!idx.has(code)) continue;
    double a = 0.0;
    if (!readNumber(t, idx[code], a)) return S::InvalidData;
    const double turned = ocs.angleRad(a);
    c.edits.set(t, idx[code], turned < 0.0 ? turned + 2.0 * kPi : turned);  // written in [0, 2 pi)
  }
  return S::Ok;
}

TransformStatus transformLargeRadialDimension(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const std::size_t own = subclassMarker(t, "AcDbRadialDimensionLarge");
  if (own == kNone) return S::InvalidData;
  if (const S s = planDimension(t, own, c); s != S::Ok) return s;
  // Chord point, the centre shown instead of the true one, and the jog point; the jog angle is measured
  // against the dimension line and turns with it.
  if (!planWorldPointsOf(t, CodeIndex(t, own + 1), {13, 14, 15}, c)) return S::InvalidData;
  return S::Ok;
}

}  // namespace dxf::xform
