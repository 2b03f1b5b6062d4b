#include "geometry/KoCalcPlane.h"
#include "geometry/KoPlaneList.h"
#include "points/KoPointList.h"
#include "support/KoTokenReader.h"
#include "tests/geo2d/LeastSquares.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

namespace {

TEST(Plane, DominantAxisDistanceAndTheFootOfANonUnitNormal)
{
    EXPECT_EQ(KoPlane(-3, 1, 1, 0).DominantAxis(), 0);
    EXPECT_EQ(KoPlane(0, -2, 1, 0).DominantAxis(), 1);
    EXPECT_EQ(KoPlane(1, -1, 0.5, 0).DominantAxis(), 2);  // |nx| = |ny| > |nz|: ties go to z

    // The plane z = 2 with a normal of length 2: the distance divides by the length, the foot does not.
    const KoPlane z2(0, 0, 2, -4);
    const KoPoint above(1, 0, 0, 5, 7);
    KoPoint foot;
    EXPECT_EQ(z2.SignedDistance(above), 3.0);
    ASSERT_TRUE(z2.Foot(above, foot));
    EXPECT_EQ(foot.z, -1.0);
    EXPECT_FALSE(KoPlane().Foot(above, foot));
}

TEST(Plane, ParallelismAngleTestsAndDistanceBetweenPlanes)
{
    EXPECT_EQ(kKoPlaneParallelTolerance, 0.00039999999999995595);
    const KoPlane a(1, 0, 0, -5);
    EXPECT_EQ(a.DistanceTo(KoPlane(1, 0.0003, 0, -2)), -3.0);
    EXPECT_EQ(a.DistanceTo(KoPlane(1, 0.0005, 0, -2)), 0.0);  // not parallel any more
    EXPECT_FALSE(a.IsParallel(KoPlane(-2, 0, 0, 1)));          // opposite normals
    // Normalising (1, 1, 1) gives a scalar product just above 1.0; the angle must still be 0.
    EXPECT_EQ(KoPlane(1, 1, 1, 0).Angle(KoPlane(2, 2, 2, 6)), 0.0);

    EXPECT_TRUE(a.IsWideAngle(KoPlane(0, 1, 0, 0)));
    EXPECT_TRUE(a.IsWideAngle(KoPlane(1, std::tan(M_PI / 4 - 0.0003), 0, 0)));  // within the tolerance
    EXPECT_FALSE(a.IsWideAngle(KoPlane(1, std::tan(M_PI / 4 - 0.0005), 0, 0)));
}

TEST(Plane, ReadCopyTextFormAndList)
{
    std::istringstream in("7 Roof 0.5 x 2 -4");
    KoTokenReader reader(in);
    KoPlane roof;
    roof.Read(reader);
    KoPlane copy(1, 0, 0, 3.25);
    copy = roof;
    EXPECT_EQ(copy.ToString(), " v: 0.500 0.000, 2.000, D: -4.000");  // "x" is not a number
    EXPECT_EQ(copy.name.View(), "Roof");
    EXPECT_EQ(copy.number, 7u);

    KoPlaneList list;
    list.AppendCopy(KoPlane(1, 0, 0, 0));
    list.AppendCopy(roof);
    EXPECT_EQ(list.FindParallel(KoPlane(0.25, 0.0001, 1, 9)), list.Last());
    EXPECT_EQ(list.FindParallel(KoPlane(0.0002, 1, 0, 9)), nullptr);
}

// Points of the plane: the two free coordinates at random around a centre, the dominant one solved
// from the plane equation, plus noise on that one.
KoPointList PointsOn(const KoPlane& plane, int count, double noise, std::mt19937& rng, double cx = 0, double cy = 0)
{
    std::uniform_real_distribution<double> u(-50, 50);
    std::normal_distribution<double> e(0.0, 1.0);
    const int k = plane.DominantAxis();
    KoPointList list;
    for (int i = 0; i < count; ++i) {
        double p[3] = {cx + u(rng), cy + u(rng), u(rng)};
        p[k] = 0;
        p[k] = -(plane.normal[1] * p[0] + plane.normal[2] * p[1] + plane.normal[3] * p[2] + plane.D) /
                   plane.normal[k + 1] + noise * e(rng);
        list.Append(new KoPoint(static_cast<uint32_t>(i + 1), p[0], p[1], p[2], 7));
    }
    return list;
}

// Same plane up to the orientation of the normal; the fit makes the dominant component positive.
void ExpectSamePlane(const KoPlane& fitted, const KoPlane& truth, double tolerance)
{
    const double len = truth.normal.Length();
    const double sign = truth.normal[truth.DominantAxis() + 1] > 0 ? 1.0 : -1.0;
    for (int i = 1; i <= 3; ++i)
        EXPECT_NEAR(fitted.normal[i], sign * truth.normal[i] / len, tolerance) << truth.ToString();
    EXPECT_NEAR(fitted.D, sign * truth.D / len, tolerance * (1 + std::fabs(truth.D / len)));
}

TEST(CalcPlane, FitsExactPointsWhateverTheDominantAxisAndAtSurveyCoordinates)
{
    std::mt19937 rng(99);
    // A roof, steep walls along x and y, a vertical wall x = 5, and a tie between x and z.
    const KoPlane truths[] = {KoPlane(0.1, -0.2, 1, -3), KoPlane(1, 0.3, -0.2, 7), KoPlane(0.2, -1, 0.4, -12),
                              KoPlane(1, 0, 0, -5), KoPlane(1, 0.2, 1, 4)};
    for (const KoPlane& truth : truths) {
        KoCalcPlane plane;  // invalid: the fit starts against z
        ASSERT_TRUE(plane.Fit(PointsOn(truth, 12, 0, rng))) << truth.ToString();
        ExpectSamePlane(plane, truth, 1e-9);
        EXPECT_LT(plane.Rms(), 1e-9);
        EXPECT_TRUE(plane.normal.IsUnit(1e-12));
    }
    // A steep wall started against z needs a second regression against x.
    KoCalcPlane wall;
    ASSERT_TRUE(wall.Fit(PointsOn(truths[1], 12, 0, rng)));
    EXPECT_EQ(wall.Rounds(), 2);

    // Gauss-Krueger coordinates with a gentle slope.
    const KoPlane slope(0.05, 0.02, 1, -0.05 * 4'512'345.678 - 0.02 * 5'432'109.876 - 312.5);
    KoCalcPlane terrain;
    ASSERT_TRUE(terrain.Fit(PointsOn(slope, 20, 0, rng, 4'512'345.678, 5'432'109.876)));
    EXPECT_LT(terrain.Rms(), 1e-6);
    EXPECT_NEAR(terrain.Nx(), 0.05 / slope.normal.Length(), 1e-9);
}

TEST(CalcPlane, NoisyFitEqualsTheRegressionOfTheDominantCoordinate)
{
    std::mt19937 rng(11);
    const KoPointList points = PointsOn(KoPlane(0.3, -0.1, 1, -20), 40, 0.05, rng);
    KoCalcPlane plane(0, 0, 1, 0);
    ASSERT_TRUE(plane.Fit(points));

    // z = a + b x + c y by QR.
    std::vector<geo2d_test::Row> a;
    std::vector<long double> l;
    for (const KoPoint& p : points) {
        a.push_back({1.0L, p.x, p.y});
        l.push_back(p.z);
    }
    const std::vector<double> abc = geo2d_test::LeastSquares(a, l);
    ExpectSamePlane(plane, KoPlane(-abc[1], -abc[2], 1, -abc[0]), 1e-10);
    EXPECT_GT(plane.Rms(), 0.03);  // perpendicular to a plane of slope 0.3, the noise of 0.05 in z shrinks
    EXPECT_LT(plane.Rms(), 0.06);
}

TEST(CalcPlane, RefusesPointsThatDoNotSpanAPlaneAndStaysUnchanged)
{
    KoCalcPlane plane(0, 0, 1, -2);
    const auto line = [](double dx, double dy, double dz, int count) {
        KoPointList points;
        for (int n = 0; n < count; ++n)
            points.Append(new KoPoint(n + 1, 3 + n * dx, 4 + n * dy, 5 + n * dz, 7));
        return points;
    };
    EXPECT_FALSE(plane.Fit(line(1, 2, 3, 2)));  // too few
    EXPECT_FALSE(plane.Fit(line(1, 2, 3, 5)));  // on a skew line
    EXPECT_FALSE(plane.Fit(line(0, 0, 1, 5)));  // on a vertical line
    EXPECT_FALSE(plane.Fit(line(0, 0, 0, 5)));  // all in one place
    EXPECT_EQ(plane.ToString(), " v: 0.000 0.000, 1.000, D: -2.000");
}

}  // namespace
