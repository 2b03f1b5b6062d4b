#pragma once

#include "geometry/KoPlane.h"

class KoPointList;

// Plane fitted to measured points (a roof face, a wall, a terrain patch).
//
// The fit is a regression of the dominant coordinate (the one the plane is steepest against) on the two
// others: those are scaled to 0 ... 1 over their range (u, w), and the heights a0, a1, a2 of the plane over
// (u, w) = (0, 0), (1, 0), (0, 1) are found by least squares with the coefficients (1 - u - w, u, w), a
// 3x3 normal system solved by Cramer's rule. A regression only measures misfit along that one axis, so
// when the fitted normal turns out to be dominant along another axis the fit is repeated against it.
class KoCalcPlane : public KoPlane {
public:
    using KoPlane::KoPlane;

    // Fits the plane to the points' x, y, z, starting from the dominant axis of the current normal (z for
    // an invalid plane). The result has a unit normal whose dominant component is positive. False, and the
    // plane unchanged, for fewer than three points or points that do not span a plane.
    bool Fit(const KoPointList& points);

    // Root mean square of the perpendicular distances of the points from the last fitted plane.
    double Rms() const { return m_rms; }
    // Regressions the last fit needed (1 unless the dominant axis changed).
    int Rounds() const { return m_rounds; }

private:
    double m_rms = 0.0;
    int m_rounds = 0;
};
