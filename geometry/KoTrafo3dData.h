#pragma once

#include "geometry/KoMatrix.h"
#include "geometry/KoVector.h"

// The parameters of one spatial similarity transformation: a point p maps to b + scale * rotation * (p - a).
struct KoTrafo3dData {
  KoTrafo3dData() : rotation(3, 3), a(3), b(3), scale(1.0) {}

  KoMatrix rotation;  // proper rotation (determinant +1); all zero until estimated
  KoVector a;         // subtracted before rotating: the centroid of the actual points
  KoVector b;         // added after rotating and scaling: the centroid of the target points
  double scale;
};
