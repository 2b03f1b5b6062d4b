#include "geometry/KoCalcPlane.h"

#include "geometry/KoMatrix.h"
#include "points/KoPointList.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double Coordinate(const KoPoint& p, int axis) { return axis == 0 ? p.x : axis == 1 ? p.y : p.z; }

struct Range {
    double min = std::numeric_limits<double>::max();
    double max = -std::numeric_limits<double>::max();
    double Width() const { return max - min; }
};

Range RangeOf(const KoPointList& points, int axis)
{
    Range r;
    for (const KoPoint& p : points) {
        r.min = std::min(r.min, Coordinate(p, axis));
        r.max = std::max(r.max, Coordinate(p, axis));
    }
    return r;
}

// Whether a coordinate spread counts as none, relative to the size of the coordinates themselves.
bool IsFlat(const Range& r)
{
    return r.Width() <= 1e-10 * std::max({1.0, std::fabs(r.min), std::fabs(r.max)});
}

// Regression of coordinate `axis` on the two others; false when the points do not span the (u, w) plane.
bool Regress(const KoPointList& points, int axis, KoVector& normal, double& d)
{
    const int ia = (axis + 1) % 3;
    const int ib = (axis + 2) % 3;
    const Range ra = RangeOf(points, ia);
    const Range rb = RangeOf(points, ib);
    if (IsFlat(ra) || IsFlat(rb))
        return false;

    // Heights are taken relative to their mean so that large coordinates keep their digits.
    double mean = 0.0;
    int n = 0;
    for (const KoPoint& p : points) {
        mean += Coordinate(p, axis);
        ++n;
    }
    mean /= n;

    KoMatrix normalSystem(3, 3);
    KoVector rhs(3);
    for (const KoPoint& p : points) {
        const double u = (Coordinate(p, ia) - ra.min) / ra.Width();
        const double w = (Coordinate(p, ib) - rb.min) / rb.Width();
        const double f[3] = {1.0 - u - w, u, w};
        const double c = Coordinate(p, axis) - mean;
        for (int i = 0; i < 3; ++i) {
            rhs[i + 1] += f[i] * c;
            for (int j = 0; j < 3; ++j)
                normalSystem(i + 1, j + 1) += f[i] * f[j];
        }
    }
    // Points along one line in (u, w) leave the system singular; the sums are of order n, so an
    // absolute threshold on the determinant separates that case.
    if (std::fabs(normalSystem.Determinant3()) < 1e-10)
        return false;
    const KoVector h = normalSystem.SolveCramer3(rhs);
    const double slopeA = (h[2] - h[1]) / ra.Width();
    const double slopeB = (h[3] - h[1]) / rb.Width();

    // c = mean + h1 + slopeA (a - minA) + slopeB (b - minB)  <=>  c - slopeA a - slopeB b + D = 0.
    KoVector n3(3);
    n3[axis + 1] = 1.0;
    n3[ia + 1] = -slopeA;
    n3[ib + 1] = -slopeB;
    double constant = -(mean + h[1]) + slopeA * ra.min + slopeB * rb.min;
    const double length = n3.Length();
    if (!std::isfinite(length) || !std::isfinite(constant))
        return false;
    n3 *= 1.0 / length;
    normal = n3;
    d = constant / length;
    return true;
}

}  // namespace

bool KoCalcPlane::Fit(const KoPointList& points)
{
    if (points.Count() < 3)
        return false;

    // A coordinate without spread is the plane's own axis (a wall x = const): regressing on it fails.
    int axis = IsValid() ? DominantAxis() : 2;
    for (int a = 0; a < 3; ++a)
        if (IsFlat(RangeOf(points, a)))
            axis = a;

    KoVector fitted(3);
    double fittedD = 0.0;
    int rounds = 0;
    // Each axis at most once: the dominant axis of a good fit is stable, so a third change means the
    // points are too scattered for the regression to settle.
    for (int tried = 0; tried < 3; ++tried) {
        if (!Regress(points, axis, fitted, fittedD))
            return false;
        ++rounds;
        const int dominant = KoPlane(fitted[1], fitted[2], fitted[3], fittedD).DominantAxis();
        if (dominant == axis)
            break;
        axis = dominant;
    }

    normal = fitted;
    D = fittedD;
    m_rounds = rounds;
    double sum = 0.0;
    int n = 0;
    for (const KoPoint& p : points) {
        const double distance = SignedDistance(p);
        sum += distance * distance;
        ++n;
    }
    m_rms = std::sqrt(sum / n);
    return true;
}
