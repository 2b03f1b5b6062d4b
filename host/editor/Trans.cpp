// Coordinate system conversion. This host keeps no user coordinate system and no view twist: world, user
// and display coordinates coincide, so conversions between them copy the point.
#include "sdk/AcEd.h"

namespace {

bool isKnownSystem(const resbuf* rb) {
  if (!rb) return false;
  if (rb->restype == RTSHORT) return rb->resval.rint >= kWorldCS && rb->resval.rint <= kDisplayCS;
  // An extrusion direction names an entity's own system; only the world's z axis coincides with the world.
  if (rb->restype == RT3DPOINT) {
    const ads_real* v = rb->resval.rpoint;
    return v[0] == 0.0 && v[1] == 0.0 && v[2] > 0.0;
  }
  return false;
}

}  // namespace

int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int /*disp*/, ads_point result) {
  if (!point || !result) return RTERROR;
  if (!isKnownSystem(from) || !isKnownSystem(to)) return RTREJ;
  for (int i = 0; i < 3; ++i) result[i] = point[i];
  return RTNORM;
}
