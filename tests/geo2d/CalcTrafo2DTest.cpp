#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoCalcTrafo2D.h"
#include "tests/geo2d/LeastSquares.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace {

using geo2d_test::Row;

struct Pair {
    double x, y, X, Y;
};

// Each type's observation equations as design rows (for X, for Y) in parameter order, for the
// independent solution.
using DesignRows = std::function<void(const Pair&, Row& forX, Row& forY)>;

struct Case {
    int32_t type;
    size_t unknowns;
    bool (KoCalcTrafo2D::*estimate)(const KoPointList&);
    double extent;  // of the source coordinates; the cubic terms want small ones
    DesignRows rows;
};

const Case kCases[] = {
    {KoTrafo2d::kHelmert, 4, &KoCalcTrafo2D::EstimateHelmert, 200,
     [](const Pair& p, Row& rx, Row& ry) {
         rx[0] = 1, rx[1] = p.x, rx[3] = -p.y;
         ry[2] = 1, ry[3] = p.x, ry[1] = p.y;
     }},
    {KoTrafo2d::kAffin, 6, &KoCalcTrafo2D::EstimateAffin, 200,
     [](const Pair& p, Row& rx, Row& ry) {
         rx[0] = 1, rx[1] = p.x, rx[2] = p.y;
         ry[3] = 1, ry[4] = p.x, ry[5] = p.y;
     }},
    {KoTrafo2d::kProjektiv, 8, &KoCalcTrafo2D::EstimateProjektiv, 200,
     [](const Pair& p, Row& rx, Row& ry) {
         rx[0] = p.x, rx[1] = p.y, rx[2] = 1, rx[6] = -p.x * p.X, rx[7] = -p.y * p.X;
         ry[3] = p.x, ry[4] = p.y, ry[5] = 1, ry[6] = -p.x * p.Y, ry[7] = -p.y * p.Y;
     }},
    {KoTrafo2d::kPolynomial, 20, &KoCalcTrafo2D::EstimatePolynomial, 3,
     [](const Pair& p, Row& rx, Row& ry) {
         const long double x = p.x;
         const long double y = p.y;
         const long double t[10] = {1, x, y, x * x, x * y, y * y, x * x * x, x * x * y, x * y * y, y * y * y};
         for (int i = 0; i < 10; ++i)
             rx[i] = t[i], ry[10 + i] = t[i];
     }},
};

// Source points numbered 1 ... n with targets from `truth` plus noise. The reference list holds the targets
// in reverse order after a stray point, so pairing has to go by number and not by position.
struct Lists {
    KoPointList source, reference;
    std::vector<Row> design;
    std::vector<long double> observed;
};

void Fill(Lists& lists, const Case& c, const KoTrafo2d& truth, size_t n, double noise, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-c.extent, c.extent);
    std::normal_distribution<double> e(0.0, 1.0);
    lists.reference.Append(new KoPoint(1000, 1e6, -1e6, 0, 3));
    for (uint32_t i = 1; i <= n; ++i) {
        Pair p{u(rng), u(rng), 0, 0};
        p.X = p.x, p.Y = p.y;
        truth.Apply(p.X, p.Y);
        p.X += noise * e(rng), p.Y += noise * e(rng);
        lists.source.Append(new KoPoint(i, p.x, p.y, 0, 3));
        lists.reference.InsertBefore(lists.reference.At(1), new KoPoint(i, p.X, p.Y, 0, 3));
        Row rx(c.unknowns, 0);
        Row ry(c.unknowns, 0);
        c.rows(p, rx, ry);
        lists.design.insert(lists.design.end(), {rx, ry});
        lists.observed.insert(lists.observed.end(), {p.X, p.Y});
    }
}

TEST(CalcTrafo2D, EstimatesRecoverExactDataAndMatchAnIndependentSolutionOnNoisyData)
{
    std::mt19937 rng(20261121);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (const Case& c : kCases) {
        KoTrafo2d truth;
        truth.SetType(c.type);
        for (int i = 0; i < static_cast<int>(c.unknowns); ++i)
            truth.SetParameter(i, u(rng) * (c.type == KoTrafo2d::kPolynomial ? 1.0 / (1 + i % 10) : 2.0));
        truth.SetParameter(0, 500 * u(rng));  // a real shift; Projektiv: keep the horizon far away
        if (c.type == KoTrafo2d::kProjektiv)
            truth.SetParameter(6, 1e-3 * u(rng)), truth.SetParameter(7, 1e-3 * u(rng));

        Lists exact;
        Fill(exact, c, truth, c.unknowns + 3, 0.0, rng);
        KoCalcTrafo2D calc(&exact.reference);
        ASSERT_TRUE((calc.*c.estimate)(exact.source));
        EXPECT_EQ(calc.GetType(), c.type);
        for (int i = 0; i < static_cast<int>(c.unknowns); ++i)
            EXPECT_NEAR(calc.Parameter(i), truth.Parameter(i), 1e-7 * (1 + std::fabs(truth.Parameter(i))))
                << calc.TypeName() << " p" << i;
        EXPECT_LT(calc.MeanError(), 1e-7) << calc.TypeName();
        const double scale = c.type == KoTrafo2d::kHelmert ? std::hypot(truth.Parameter(1), truth.Parameter(3)) : 1;
        EXPECT_NEAR(calc.Scale(), scale, 1e-12);

        // Noisy pairs against least squares by QR, with the mean error of unit weight.
        Lists noisy;
        Fill(noisy, c, truth, 3 * c.unknowns, 0.05, rng);
        KoCalcTrafo2D fit(&noisy.reference);
        ASSERT_TRUE((fit.*c.estimate)(noisy.source));
        const std::vector<double> expected = geo2d_test::LeastSquares(noisy.design, noisy.observed);
        long double vv = 0;
        for (size_t k = 0; k < noisy.design.size(); ++k) {
            long double v = -noisy.observed[k];
            for (size_t i = 0; i < c.unknowns; ++i)
                v += noisy.design[k][i] * expected[i];
            vv += v * v;
        }
        for (int i = 0; i < static_cast<int>(c.unknowns); ++i)
            EXPECT_NEAR(fit.Parameter(i), expected[i], 1e-7 * (1 + std::fabs(expected[i])))
                << fit.TypeName() << " p" << i;
        const double sigma = std::sqrt(static_cast<double>(vv) / static_cast<double>(5 * c.unknowns));
        EXPECT_NEAR(fit.MeanError(), sigma, 1e-4 * sigma) << fit.TypeName();
    }
}

TEST(CalcTrafo2D, MinimumCountsEverySourcePointPairedOrNot)
{
    KoCalcTrafo2D calc;  // targets in its own list
    EXPECT_EQ(&calc.ReferenceList(), &calc.OwnList());
    calc.SetType(KoTrafo2d::kAffin);
    calc.SetParameter(0, 42.0);

    KoPointList source;
    source.Append(new KoPoint(1, 0, 0, 0, 3));
    calc.OwnList().Append(new KoPoint(1, 5, 5, 0, 3));
    EXPECT_FALSE(calc.EstimateHelmert(source));
    EXPECT_EQ(calc.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(calc.Parameter(0), 42.0);

    // Three source points of which two have partners pass the Affin minimum, although four observations
    // cannot determine six unknowns.
    source.Append(new KoPoint(2, 10, 0, 0, 3));
    source.Append(new KoPoint(3, 0, 10, 0, 3));
    calc.OwnList().Append(new KoPoint(2, 15, 5, 0, 3));
    EXPECT_FALSE(calc.EstimateProjektiv(source));
    EXPECT_TRUE(calc.EstimateAffin(source));
    for (uint32_t n = 4; n <= 9; ++n)
        source.Append(new KoPoint(n, n, n * n, 0, 3));
    EXPECT_FALSE(calc.EstimatePolynomial(source));  // nine points, one short
    EXPECT_EQ(calc.GetType(), KoTrafo2d::kAffin);

    ASSERT_TRUE(calc.EstimateHelmert(source));  // two pairs of a congruent figure
    EXPECT_NEAR(calc.Scale(), 1.0, 1e-12);
}

KoPointList PointsAt(std::initializer_list<std::pair<double, double>> xy)
{
    KoPointList list;
    uint32_t n = 1;
    for (auto [x, y] : xy)
        list.Append(new KoPoint(n++, x, y, 0, 3));
    return list;
}

TEST(CalcTrafo2D, RichestTypeByCountAndSpread)
{
    for (size_t n = 0; n < 12; ++n)
        EXPECT_EQ(KoCalcTrafo2D::RichestTypeByCount(n), (n > 1) + (n > 2) + (n > 3) + (n > 9)) << n;
    KoPointList reference = PointsAt({{0, 0}, {1, 1}, {2, 2}});
    EXPECT_EQ(KoCalcTrafo2D(&reference).RichestTypeByCount(), KoTrafo2d::kAffin);

    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {5, 5}})), KoTrafo2d::kHelmert);
    // Four corners and nothing in the centre third.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}})), KoTrafo2d::kAffin);
    // The middle point lies in every rectangle and must mark the centre, which is tested first.
    const KoPointList five = PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}, {4.5, 4.5}});
    EXPECT_EQ(KoCalcTrafo2D::RichestType(five), KoTrafo2d::kProjektiv);
    // (4.5, 0) borders both lower quarters and marks lower right, which comes first.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{4.5, 0}, {0, 0}, {0, 9}, {9, 9}, {4.5, 4.5}})),
              KoTrafo2d::kProjektiv);
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{4.5, 0}, {1, 9}, {0, 9}, {9, 9}, {4.5, 4.5}})),
              KoTrafo2d::kAffin);
    // A rectangle given by the caller governs, not the points' own extent.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(five, KoBoundingBox2d(0, 0, 90, 90)), KoTrafo2d::kAffin);

    // Thirteen well spread points allow the polynomial, twelve stay projective.
    KoPointList spread = PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}, {4.5, 4.5}, {1, 1}, {8, 1}, {1, 8}, {8, 8},
                                   {2, 6}, {6, 2}, {3, 3}, {7, 7}});
    EXPECT_EQ(KoCalcTrafo2D::RichestType(spread), KoTrafo2d::kPolynomial);
    delete spread.Remove(spread.Last());
    EXPECT_EQ(KoCalcTrafo2D::RichestType(spread), KoTrafo2d::kProjektiv);

    // Many points along one edge: the count would allow the polynomial, the spread only Affin.
    KoPointList edge;
    for (uint32_t n = 1; n <= 20; ++n)
        edge.Append(new KoPoint(n, n, 0.01 * n, 0, 3));
    EXPECT_EQ(KoCalcTrafo2D::RichestType(edge), KoTrafo2d::kAffin);
}

}  // namespace
