#pragma once

// Conversions between points and vectors. They live with the vectors because the point layer sits below
// the geometry layer and knows nothing of vectors.

#include "geometry/KoVector.h"

class KoPoint;

// The coordinates as a 3-vector (X, Y, Z).
KoVector KoPointCoordinates(const KoPoint& point);

// Writes elements 1, 2 and 3 of the vector into X, Y and Z; the rest of the point is untouched. A vector
// of fewer than three elements raises code 2.
void KoSetPointCoordinates(KoPoint& point, const KoVector& coordinates);
