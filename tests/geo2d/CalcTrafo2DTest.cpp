#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoCalcTrafo2D.h"
#include "tests/geo2d/LeastSquares.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace {

using geo2d_test::LeastSquares;
using geo2d_test::Row;

struct Pair {
    double x, y, X, Y;
};

// The model of each type as design rows (for X, for Y) in parameter order p0, p1, ...
using DesignRows = std::function<void(const Pair&, Row& forX, Row& forY)>;

std::vector<double> IndependentSolution(const std::vector<Pair>& pairs, size_t unknowns, const DesignRows& rows)
{
    std::vector<Row> a;
    std::vector<long double> l;
    for (const Pair& p : pairs) {
        Row rx(unknowns, 0);
        Row ry(unknowns, 0);
        rows(p, rx, ry);
        a.push_back(rx);
        l.push_back(p.X);
        a.push_back(ry);
        l.push_back(p.Y);
    }
    return LeastSquares(a, l);
}

const DesignRows kHelmertRows = [](const Pair& p, Row& rx, Row& ry) {
    rx[0] = 1, rx[1] = p.x, rx[3] = -p.y;
    ry[2] = 1, ry[3] = p.x, ry[1] = p.y;
};
const DesignRows kAffinRows = [](const Pair& p, Row& rx, Row& ry) {
    rx[0] = 1, rx[1] = p.x, rx[2] = p.y;
    ry[3] = 1, ry[4] = p.x, ry[5] = p.y;
};
const DesignRows kProjektivRows = [](const Pair& p, Row& rx, Row& ry) {
    rx[0] = p.x, rx[1] = p.y, rx[2] = 1, rx[6] = -p.x * p.X, rx[7] = -p.y * p.X;
    ry[3] = p.x, ry[4] = p.y, ry[5] = 1, ry[6] = -p.x * p.Y, ry[7] = -p.y * p.Y;
};
const DesignRows kPolynomialRows = [](const Pair& p, Row& rx, Row& ry) {
    const long double x = p.x;
    const long double y = p.y;
    const long double t[10] = {1, x, y, x * x, x * y, y * y, x * x * x, x * x * y, x * y * y, y * y * y};
    for (int i = 0; i < 10; ++i)
        rx[i] = t[i], ry[10 + i] = t[i];
};

struct Case {
    int32_t type;
    size_t unknowns;
    DesignRows rows;
    bool (KoCalcTrafo2D::*estimate)(const KoPointList&);
};

const Case kCases[] = {
    {KoTrafo2d::kHelmert, 4, kHelmertRows, &KoCalcTrafo2D::EstimateHelmert},
    {KoTrafo2d::kAffin, 6, kAffinRows, &KoCalcTrafo2D::EstimateAffin},
    {KoTrafo2d::kProjektiv, 8, kProjektivRows, &KoCalcTrafo2D::EstimateProjektiv},
    {KoTrafo2d::kPolynomial, 20, kPolynomialRows, &KoCalcTrafo2D::EstimatePolynomial},
};

KoTrafo2d RandomTrafo(int32_t type, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    KoTrafo2d t;
    t.SetType(type);
    switch (type) {
    case KoTrafo2d::kHelmert: {
        const double m = 0.5 + std::fabs(u(rng));
        const double a = 3.14159 * u(rng);
        t.SetParameter(0, 1000 * u(rng));
        t.SetParameter(1, m * std::cos(a));
        t.SetParameter(2, 1000 * u(rng));
        t.SetParameter(3, m * std::sin(a));
        break;
    }
    case KoTrafo2d::kAffin:
        for (int i = 0; i < 6; ++i)
            t.SetParameter(i, (i == 0 || i == 3 ? 500 : 2) * u(rng));
        break;
    case KoTrafo2d::kProjektiv:
        // Small perspective terms keep the horizon line far away from the points.
        for (int i = 0; i < 6; ++i)
            t.SetParameter(i, (i == 2 || i == 5 ? 100 : 2) * u(rng));
        t.SetParameter(6, 1e-3 * u(rng));
        t.SetParameter(7, 1e-3 * u(rng));
        break;
    default:
        for (int i = 0; i < 20; ++i)
            t.SetParameter(i, u(rng) / (1 + (i % 10)));
        break;
    }
    return t;
}

// Source points numbered 1 ... n; reference points carry the same numbers in reverse order plus strays,
// so pairing has to go by number and not by position.
struct Lists {
    KoPointList source;
    KoPointList reference;
    std::vector<Pair> pairs;
};

void Fill(Lists& lists, const KoTrafo2d& truth, size_t n, double extent, double noise, std::mt19937& rng)
{
    std::uniform_real_distribution<double> u(-extent, extent);
    std::normal_distribution<double> e(0.0, noise > 0 ? noise : 1.0);
    std::vector<Pair> pairs;
    for (size_t i = 0; i < n; ++i) {
        Pair p{u(rng), u(rng), 0, 0};
        p.X = p.x;
        p.Y = p.y;
        truth.Apply(p.X, p.Y);
        if (noise > 0) {
            p.X += e(rng);
            p.Y += e(rng);
        }
        pairs.push_back(p);
        lists.source.Append(new KoPoint(static_cast<uint32_t>(i + 1), p.x, p.y, 0, 3));
    }
    lists.reference.Append(new KoPoint(1000, 1e6, -1e6, 0, 3));
    for (size_t i = n; i-- > 0;)
        lists.reference.Append(new KoPoint(static_cast<uint32_t>(i + 1), pairs[i].X, pairs[i].Y, 0, 3));
    lists.pairs = pairs;
}

TEST(CalcTrafo2D, RecoversEveryTypeFromExactData)
{
    std::mt19937 rng(20261121);
    for (const Case& c : kCases) {
        for (int round = 0; round < 5; ++round) {
            const KoTrafo2d truth = RandomTrafo(c.type, rng);
            Lists lists;
            const double extent = c.type == KoTrafo2d::kPolynomial ? 3.0 : 200.0;
            Fill(lists, truth, c.unknowns + 3, extent, 0.0, rng);
            KoCalcTrafo2D calc(&lists.reference);
            ASSERT_TRUE((calc.*c.estimate)(lists.source));
            EXPECT_EQ(calc.GetType(), c.type);
            for (size_t i = 0; i < c.unknowns; ++i) {
                const double expected = truth.Parameter(static_cast<int>(i));
                EXPECT_NEAR(calc.Parameter(static_cast<int>(i)), expected, 1e-7 * (1 + std::fabs(expected)))
                    << calc.TypeName() << " p" << i << " round " << round;
            }
            EXPECT_LT(calc.MeanError(), 1e-5) << calc.TypeName();
            if (c.type == KoTrafo2d::kHelmert)
                EXPECT_NEAR(calc.Scale(), std::hypot(truth.Parameter(1), truth.Parameter(3)), 1e-12);
            else
                EXPECT_EQ(calc.Scale(), 1.0);
        }
    }
}

TEST(CalcTrafo2D, NoisyDataMatchesAnIndependentLeastSquaresSolution)
{
    std::mt19937 rng(7);
    for (const Case& c : kCases) {
        const KoTrafo2d truth = RandomTrafo(c.type, rng);
        Lists lists;
        const double extent = c.type == KoTrafo2d::kPolynomial ? 3.0 : 200.0;
        const size_t n = 3 * c.unknowns;
        Fill(lists, truth, n, extent, 0.05, rng);
        KoCalcTrafo2D calc(&lists.reference);
        ASSERT_TRUE((calc.*c.estimate)(lists.source));

        const std::vector<double> expected = IndependentSolution(lists.pairs, c.unknowns, c.rows);
        for (size_t i = 0; i < c.unknowns; ++i)
            EXPECT_NEAR(calc.Parameter(static_cast<int>(i)), expected[i], 1e-7 * (1 + std::fabs(expected[i])))
                << calc.TypeName() << " p" << i;

        // Mean error of unit weight from the residuals of the model equations themselves.
        long double vv = 0;
        for (const Pair& p : lists.pairs) {
            Row rx(c.unknowns, 0);
            Row ry(c.unknowns, 0);
            c.rows(p, rx, ry);
            long double fx = -p.X;
            long double fy = -p.Y;
            for (size_t i = 0; i < c.unknowns; ++i) {
                fx += rx[i] * expected[i];
                fy += ry[i] * expected[i];
            }
            vv += fx * fx + fy * fy;
        }
        const double sigma = std::sqrt(static_cast<double>(vv) / static_cast<double>(2 * n - c.unknowns));
        EXPECT_NEAR(calc.MeanError(), sigma, 1e-4 * sigma) << calc.TypeName();
        EXPECT_NEAR(calc.ResidualSum(), static_cast<double>(vv), 1e-4 * static_cast<double>(vv));
    }
}

TEST(CalcTrafo2D, HelmertThroughTwoPointsOfACongruentFigure)
{
    // Two control points rotated by 90 degrees and shifted: reproduced exactly, scale 1.
    KoCalcTrafo2D calc;
    KoPointList source;
    source.Append(new KoPoint(1, 0, 0, 0, 3));
    source.Append(new KoPoint(2, 10, 0, 0, 3));
    calc.ReferenceList().Append(new KoPoint(1, 500, 300, 0, 3));
    calc.ReferenceList().Append(new KoPoint(2, 500, 310, 0, 3));
    ASSERT_TRUE(calc.EstimateHelmert(source));
    EXPECT_NEAR(calc.Scale(), 1.0, 1e-12);
    for (const KoPoint& p : source) {
        double x = p.x;
        double y = p.y;
        ASSERT_TRUE(calc.Apply(x, y));
        const KoPoint* target = calc.ReferenceList().FindByNumber(p.number);
        EXPECT_NEAR(x, target->x, 1e-9);
        EXPECT_NEAR(y, target->y, 1e-9);
    }
    EXPECT_EQ(&calc.ReferenceList(), &calc.OwnList());
}

TEST(CalcTrafo2D, MinimumCountsEverySourcePointPairedOrNot)
{
    KoPointList reference;
    KoCalcTrafo2D calc(&reference);
    calc.SetType(KoTrafo2d::kAffin);
    calc.SetParameter(0, 42.0);

    KoPointList source;
    source.Append(new KoPoint(1, 0, 0, 0, 3));
    reference.Append(new KoPoint(1, 5, 5, 0, 3));
    EXPECT_FALSE(calc.EstimateHelmert(source));
    EXPECT_EQ(calc.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(calc.Parameter(0), 42.0);
    EXPECT_EQ(calc.Scale(), 1.0);

    // Three source points of which only two have partners pass the Affin minimum although six unknowns
    // cannot be determined from four observations: the estimate still sets its type.
    source.Append(new KoPoint(2, 10, 0, 0, 3));
    source.Append(new KoPoint(3, 0, 10, 0, 3));
    reference.Append(new KoPoint(2, 15, 5, 0, 3));
    EXPECT_FALSE(calc.EstimateProjektiv(source));
    EXPECT_TRUE(calc.EstimateAffin(source));
    EXPECT_EQ(calc.GetType(), KoTrafo2d::kAffin);

    // Nine points are one short for the polynomial.
    for (uint32_t n = 4; n <= 9; ++n)
        source.Append(new KoPoint(n, n, n * n, 0, 3));
    EXPECT_FALSE(calc.EstimatePolynomial(source));
    EXPECT_EQ(calc.GetType(), KoTrafo2d::kAffin);
}

KoPointList PointsAt(std::initializer_list<std::pair<double, double>> xy)
{
    KoPointList list;
    uint32_t n = 1;
    for (auto [x, y] : xy)
        list.Append(new KoPoint(n++, x, y, 0, 3));
    return list;
}

TEST(CalcTrafo2D, RichestTypeByCount)
{
    const int32_t expected[] = {0, 0, 1, 2, 3, 3, 3, 3, 3, 3, 4, 4, 4};
    for (size_t n = 0; n < std::size(expected); ++n)
        EXPECT_EQ(KoCalcTrafo2D::RichestTypeByCount(n), expected[n]) << n;

    KoPointList reference = PointsAt({{0, 0}, {1, 1}, {2, 2}});
    KoCalcTrafo2D calc(&reference);
    EXPECT_EQ(calc.RichestTypeByCount(), KoTrafo2d::kAffin);
    const KoPointList two = PointsAt({{0, 0}, {1, 1}});
    EXPECT_EQ(calc.RichestTypeByCount(&two), KoTrafo2d::kHelmert);
}

TEST(CalcTrafo2D, RichestTypeBySpread)
{
    // Few points keep the type the count gives.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({})), KoTrafo2d::kNone);
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {5, 5}})), KoTrafo2d::kHelmert);
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {5, 5}, {0, 5}})), KoTrafo2d::kAffin);

    // Four corners, nothing in the centre third.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}})), KoTrafo2d::kAffin);
    // The middle point lies in every rectangle; it must mark the centre, which is tested first.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}, {4.5, 4.5}})),
              KoTrafo2d::kProjektiv);
    // (4.5, 0) lies on the border of both lower quarters; lower right comes first, so the lower left
    // quarter still needs the corner point and gets it.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{4.5, 0}, {0, 0}, {0, 9}, {9, 9}, {4.5, 4.5}})),
              KoTrafo2d::kProjektiv);
    // Without the lower left corner the lower right quarter is taken by (4.5, 0) and lower left stays empty.
    EXPECT_EQ(KoCalcTrafo2D::RichestType(PointsAt({{4.5, 0}, {1, 9}, {0, 9}, {9, 9}, {4.5, 4.5}})),
              KoTrafo2d::kAffin);

    // Twelve well spread points stay projective, thirteen allow the polynomial.
    std::initializer_list<std::pair<double, double>> spread = {{0, 0}, {9, 0}, {0, 9}, {9, 9}, {4.5, 4.5},
                                                               {1, 1}, {8, 1}, {1, 8}, {8, 8}, {2, 6},
                                                               {6, 2}, {3, 3}, {7, 7}};
    KoPointList thirteen = PointsAt(spread);
    EXPECT_EQ(KoCalcTrafo2D::RichestType(thirteen), KoTrafo2d::kPolynomial);
    delete thirteen.Remove(thirteen.Last());
    EXPECT_EQ(KoCalcTrafo2D::RichestType(thirteen), KoTrafo2d::kProjektiv);

    // Many points along one edge: the count allows the polynomial, the spread only Affin.
    KoPointList edge;
    for (uint32_t n = 1; n <= 20; ++n)
        edge.Append(new KoPoint(n, n, 0.01 * n, 0, 3));
    EXPECT_EQ(KoCalcTrafo2D::RichestType(edge), KoTrafo2d::kAffin);

    // A bounding rectangle given by the caller governs the test, not the points' own extent.
    const KoPointList corners = PointsAt({{0, 0}, {9, 0}, {0, 9}, {9, 9}, {4.5, 4.5}});
    EXPECT_EQ(KoCalcTrafo2D::RichestType(corners, KoBoundingBox2d(0, 0, 90, 90)), KoTrafo2d::kAffin);
}

}  // namespace
