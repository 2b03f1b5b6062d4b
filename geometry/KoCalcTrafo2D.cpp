#include "geometry/KoCalcTrafo2D.h"

#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoMatrix.h"
#include "geometry/KoRectangle.h"
#include "geometry/KoVector.h"

#include <cmath>

namespace {

// The ten terms of the third-order polynomial, written from `first` on.
void PolynomialTerms(double x, double y, KoVector& v, int first)
{
    const double xx = x * x;
    const double yy = y * y;
    const double terms[10] = {1.0, x, y, xx, x * y, yy, xx * x, xx * y, x * yy, yy * y};
    for (int i = 0; i < 10; ++i)
        v[first + i] = terms[i];
}

}  // namespace

KoCalcTrafo2D::KoCalcTrafo2D(KoPointList* reference) : m_reference(reference ? reference : &m_ownList) {}

int32_t KoCalcTrafo2D::RichestTypeByCount(size_t pointCount)
{
    if (pointCount < 2)
        return kNone;
    if (pointCount == 2)
        return kHelmert;
    if (pointCount == 3)
        return kAffin;
    if (pointCount < 10)
        return kProjektiv;
    return kPolynomial;
}

int32_t KoCalcTrafo2D::RichestTypeByCount(const KoPointList* list) const
{
    return RichestTypeByCount((list ? list : m_reference)->Count());
}

int32_t KoCalcTrafo2D::RichestType(const KoPointList& source, const KoBoundingBox2d& bounds)
{
    const size_t count = source.Count();
    const int32_t byCount = RichestTypeByCount(count);
    if (byCount < kProjektiv)
        return byCount;

    // A projective or polynomial fit is only trusted where the points surround the area: one in the
    // centre third and one in each quarter. The test order matters because a point marks only the first
    // rectangle it falls into.
    const double minX = bounds.minX;
    const double minY = bounds.minY;
    const double maxX = bounds.maxX;
    const double maxY = bounds.maxY;
    const double dx = maxX - minX;
    const double dy = maxY - minY;
    const KoRectangle areas[5] = {
        KoRectangle(minX + dx / 3, minY + dy / 3, maxX - dx / 3, maxY - dy / 3),  // centre
        KoRectangle(minX + dx / 2, minY, maxX, minY + dy / 2),                    // lower right
        KoRectangle(minX, minY + dy / 2, minX + dx / 2, maxY),                    // upper left
        KoRectangle(minX + dx / 2, minY + dy / 2, maxX, maxY),                    // upper right
        KoRectangle(minX, minY, minX + dx / 2, minY + dy / 2),                    // lower left
    };
    bool marked[5] = {};
    for (const KoPoint& point : source) {
        for (int i = 0; i < 5; ++i) {
            if (areas[i].Contains(point)) {
                marked[i] = true;
                break;
            }
        }
    }
    for (bool m : marked)
        if (!m)
            return kAffin;
    return count < 13 ? kProjektiv : kPolynomial;
}

int32_t KoCalcTrafo2D::RichestType(const KoPointList& source)
{
    KoBoundingBox2d bounds;
    for (const KoPoint& point : source)
        bounds.Add(point.x, point.y);
    return RichestType(source, bounds);
}

bool KoCalcTrafo2D::Solve(const KoPointList& source, int unknowns, size_t minimumPoints,
                          const ObservationFiller& fill, KoVector& solution)
{
    if (source.Count() < minimumPoints)
        return false;
    const int u = unknowns;
    KoMatrix normal(u + 1, 2 * u + 1);
    for (int i = 1; i <= u; ++i)
        normal(i, u + 1 + i) = 1.0;
    KoVector forX(u + 1);
    KoVector forY(u + 1);
    // Walks the pairs: a source point without a partner of the same number contributes nothing.
    auto forEachPair = [&](const std::function<void()>& use) {
        int pairs = 0;
        for (const KoPoint& point : source) {
            const KoPoint* partner = m_reference->FindByNumber(point.number);
            if (!partner)
                continue;
            forX.Clear();
            forY.Clear();
            fill(point.x, point.y, partner->x, partner->y, forX, forY);
            use();
            ++pairs;
        }
        return pairs;
    };
    const int pairs = forEachPair([&] {
        normal.AddOuterProduct(forX);
        normal.AddOuterProduct(forY);
    });
    solution.Resize(u + 1);
    normal.CholeskySolve(solution);

    // The residuals are summed again from the observations rather than taken as [ll] - q'q from the
    // reduced system: that difference cancels to noise of about 1e-8 of [ll] and would hide a good fit.
    auto residual = [&](const KoVector& observation) {
        double computed = 0.0;
        for (int i = 1; i <= u; ++i)
            computed += observation[i] * solution[i];
        return computed - observation[u + 1];
    };
    double sum = 0.0;
    forEachPair([&] {
        const double vx = residual(forX);
        const double vy = residual(forY);
        sum += vx * vx + vy * vy;
    });
    m_residualSum = sum;
    const int redundancy = 2 * pairs - u;
    m_meanError = redundancy > 0 ? std::sqrt(sum / redundancy) : 0.0;
    return true;
}

bool KoCalcTrafo2D::EstimateHelmert(const KoPointList& source)
{
    // Unknowns (shift X, shift Y, a, b) with a = m cos(alpha), b = m sin(alpha).
    KoVector s;
    const bool solved = Solve(source, 4, 2, [](double x, double y, double X, double Y, KoVector& fx, KoVector& fy) {
        fx[1] = 1.0; fx[3] = x; fx[4] = -y; fx[5] = X;
        fy[2] = 1.0; fy[3] = y; fy[4] = x; fy[5] = Y;
    }, s);
    if (!solved)
        return false;
    m_p[0] = s[1];
    m_p[2] = s[2];
    m_p[1] = s[3];
    m_p[3] = s[4];
    m_scale = std::sqrt(s[3] * s[3] + s[4] * s[4]);
    m_type = kHelmert;
    return true;
}

bool KoCalcTrafo2D::EstimateInOrder(const KoPointList& source, int32_t type, size_t minimumPoints,
                                    const ObservationFiller& fill)
{
    const int u = ParameterCount(type);
    KoVector s;
    if (!Solve(source, u, minimumPoints, fill, s))
        return false;
    for (int i = 0; i < u; ++i)
        m_p[i] = s[i + 1];
    m_type = type;
    return true;
}

bool KoCalcTrafo2D::EstimateAffin(const KoPointList& source)
{
    const auto fill = [](double x, double y, double X, double Y, KoVector& fx, KoVector& fy) {
        fx[1] = 1.0; fx[2] = x; fx[3] = y; fx[7] = X;
        fy[4] = 1.0; fy[5] = x; fy[6] = y; fy[7] = Y;
    };
    return EstimateInOrder(source, kAffin, 3, fill);
}

bool KoCalcTrafo2D::EstimateProjektiv(const KoPointList& source)
{
    const auto fill = [](double x, double y, double X, double Y, KoVector& fx, KoVector& fy) {
        fx[1] = x; fx[2] = y; fx[3] = 1.0; fx[7] = -x * X; fx[8] = -y * X; fx[9] = X;
        fy[4] = x; fy[5] = y; fy[6] = 1.0; fy[7] = -x * Y; fy[8] = -y * Y; fy[9] = Y;
    };
    return EstimateInOrder(source, kProjektiv, 4, fill);
}

bool KoCalcTrafo2D::EstimatePolynomial(const KoPointList& source)
{
    const auto fill = [](double x, double y, double X, double Y, KoVector& fx, KoVector& fy) {
        PolynomialTerms(x, y, fx, 1);
        fx[21] = X;
        PolynomialTerms(x, y, fy, 11);
        fy[21] = Y;
    };
    return EstimateInOrder(source, kPolynomial, 10, fill);
}
