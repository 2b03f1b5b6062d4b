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

TEST(Plane, ValidityDominantAxisAndDistances)
{
    KoPlane none;
    EXPECT_FALSE(none.IsValid());
    KoPoint foot;
    foot.x = 9;
    EXPECT_FALSE(none.Foot(KoPoint(1, 1, 2, 3, 7), foot));
    EXPECT_EQ(foot.x, 9.0);
    EXPECT_TRUE(KoPlane(0, -1e-300, 0, 5).IsValid());

    EXPECT_EQ(KoPlane(-3, 1, 1, 0).DominantAxis(), 0);
    EXPECT_EQ(KoPlane(0, -2, 1, 0).DominantAxis(), 1);
    EXPECT_EQ(KoPlane(1, -1, 0.5, 0).DominantAxis(), 2);  // |nx| = |ny| > |nz|: ties go to z
    EXPECT_EQ(KoPlane(1, 2, -2, 0).DominantAxis(), 2);
    EXPECT_EQ(KoPlane(2, 2, 2, 0).DominantAxis(), 2);

    // The plane z = 2 with a normal of length 2: the distance divides by the length, the foot does not.
    const KoPlane z2(0, 0, 2, -4);
    const KoPoint above(1, 0, 0, 5, 7);
    EXPECT_EQ(z2.SignedDistance(above), 3.0);
    EXPECT_EQ(z2.SignedDistance(0, 0, -1), -3.0);
    ASSERT_TRUE(z2.Foot(above, foot));
    EXPECT_EQ(foot.x, 0.0);
    EXPECT_EQ(foot.y, 0.0);
    EXPECT_EQ(foot.z, -1.0);

    // With a unit normal the foot lies on the plane.
    const KoPlane tilted(0.6, 0, 0.8, -10);
    const KoPoint p(2, 3, -4, 7, 7);
    ASSERT_TRUE(tilted.Foot(p, foot));
    EXPECT_NEAR(tilted.SignedDistance(foot), 0.0, 1e-12);
    EXPECT_EQ(foot.y, -4.0);
}

TEST(Plane, ParallelismAngleTestsAndDistanceBetweenPlanes)
{
    EXPECT_EQ(kKoPlaneParallelTolerance, 0.00039999999999995595);

    const KoPlane a(1, 0, 0, -5);
    const KoPlane nearly(1, 0.0003, 0, -2);
    EXPECT_TRUE(a.IsParallel(nearly));
    EXPECT_EQ(a.DistanceTo(nearly), -3.0);
    EXPECT_EQ(nearly.DistanceTo(a), 3.0);

    const KoPlane off(1, 0.0005, 0, -2);
    EXPECT_FALSE(a.IsParallel(off));
    EXPECT_EQ(a.DistanceTo(off), 0.0);

    // Normalising (1, 1, 1) twice gives a scalar product just above 1.0; the angle must still be 0.
    const KoPlane diagonal(1, 1, 1, 0);
    const KoPlane diagonal2(2, 2, 2, 6);
    EXPECT_EQ(diagonal.Angle(diagonal2), 0.0);
    EXPECT_TRUE(diagonal.IsParallel(diagonal2));
    EXPECT_EQ(diagonal.DistanceTo(diagonal2), -6.0);

    // Opposite normals describe the same orientation but do not count as parallel.
    const KoPlane flipped(-2, 0, 0, 1);
    EXPECT_NEAR(a.Angle(flipped), M_PI, 1e-12);
    EXPECT_FALSE(a.IsParallel(flipped));

    EXPECT_TRUE(a.IsWideAngle(KoPlane(0, 1, 0, 0)));
    EXPECT_TRUE(a.IsWideAngle(KoPlane(1, 1, 0, 0)));           // exactly a quarter of pi
    EXPECT_TRUE(a.IsWideAngle(KoPlane(1, std::tan(M_PI / 4 - 0.0003), 0, 0)));  // within the tolerance
    EXPECT_FALSE(a.IsWideAngle(KoPlane(1, std::tan(M_PI / 4 - 0.0005), 0, 0)));
    EXPECT_FALSE(a.IsWideAngle(nearly));
}

TEST(Plane, CopyReadAndTextForm)
{
    std::istringstream in("7 Roof 0.5 x 2 -4  8 \"Nord Wand\" 1 0 0 3.25");
    KoTokenReader reader(in);
    KoPlane roof;
    roof.Read(reader);
    EXPECT_EQ(roof.number, 7u);
    EXPECT_EQ(roof.name.View(), "Roof");
    EXPECT_EQ(roof.Nx(), 0.5);
    EXPECT_EQ(roof.Ny(), 0.0);  // not a number
    EXPECT_EQ(roof.Nz(), 2.0);
    EXPECT_EQ(roof.D, -4.0);
    EXPECT_EQ(roof.ToString(), " v: 0.500 0.000, 2.000, D: -4.000");

    KoPlane wall;
    wall.Read(reader);
    EXPECT_EQ(wall.name.View(), "Nord Wand");
    EXPECT_EQ(wall.ToString(), " v: 1.000 0.000, 0.000, D: 3.250");

    wall = roof;
    EXPECT_EQ(wall.number, 7u);
    EXPECT_EQ(wall.name.View(), "Roof");
    EXPECT_EQ(wall.Nz(), 2.0);
    EXPECT_EQ(wall.D, -4.0);
    wall.normal[3] = 5.0;
    EXPECT_EQ(roof.Nz(), 2.0);  // the normal is not shared

    KoPlaneList list;
    list.AppendCopy(roof);
    list.AppendCopy(KoPlane(1, 0, 0, 0));
    list.AppendCopy(KoPlane(0, 0, -3, 1));
    EXPECT_EQ(list.Count(), 3u);
    EXPECT_EQ(list.FindParallel(KoPlane(0.25, 0.0001, 1, 9)), list.First());
    EXPECT_EQ(list.FindParallel(KoPlane(0.0002, 1, 0, 9)), nullptr);
    EXPECT_EQ(list.FindByName("Roof")->D, -4.0);
}

KoPointList PointsOn(double nx, double ny, double nz, double d, int count, double extent, double noise,
                     std::mt19937& rng, double ox = 0, double oy = 0, double oz = 0)
{
    // Points spread over the plane through the foot of the origin, plus noise along the normal.
    std::uniform_real_distribution<double> u(-extent, extent);
    std::normal_distribution<double> e(0.0, noise > 0 ? noise : 1.0);
    const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
    const double n[3] = {nx / len, ny / len, nz / len};
    // Two directions in the plane.
    double t1[3] = {n[1], -n[0], 0};
    if (std::fabs(n[2]) > 0.9)
        t1[0] = 0, t1[1] = n[2], t1[2] = -n[1];
    double l1 = std::sqrt(t1[0] * t1[0] + t1[1] * t1[1] + t1[2] * t1[2]);
    for (double& c : t1)
        c /= l1;
    const double t2[3] = {n[1] * t1[2] - n[2] * t1[1], n[2] * t1[0] - n[0] * t1[2], n[0] * t1[1] - n[1] * t1[0]};
    KoPointList list;
    for (int i = 0; i < count; ++i) {
        const double a = u(rng);
        const double b = u(rng);
        const double off = noise > 0 ? e(rng) : 0.0;
        double p[3];
        for (int k = 0; k < 3; ++k)
            p[k] = -d / len * n[k] + a * t1[k] + b * t2[k] + off * n[k];
        list.Append(new KoPoint(static_cast<uint32_t>(i + 1), p[0] + ox, p[1] + oy, p[2] + oz, 7));
    }
    return list;
}

void ExpectSamePlane(const KoPlane& fitted, double nx, double ny, double nz, double d, double tolerance)
{
    const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
    // The fit orients the normal so that its dominant component is positive.
    const int axis = KoPlane(nx, ny, nz, d).DominantAxis();
    const double sign = (axis == 0 ? nx : axis == 1 ? ny : nz) > 0 ? 1.0 : -1.0;
    EXPECT_NEAR(fitted.Nx(), sign * nx / len, tolerance);
    EXPECT_NEAR(fitted.Ny(), sign * ny / len, tolerance);
    EXPECT_NEAR(fitted.Nz(), sign * nz / len, tolerance);
    EXPECT_NEAR(fitted.D, sign * d / len, tolerance * (1 + std::fabs(d / len)));
}

TEST(CalcPlane, FitsExactPointsWhateverTheDominantAxis)
{
    std::mt19937 rng(99);
    struct Truth {
        double nx, ny, nz, d;
    };
    // A roof, a steep wall along x, one along y, a vertical wall x = 5, and a tie between x and z.
    const Truth truths[] = {{0.1, -0.2, 1, -3}, {1, 0.3, -0.2, 7}, {0.2, -1, 0.4, -12}, {1, 0, 0, -5},
                            {1, 0.2, 1, 4}};
    for (const Truth& t : truths) {
        const KoPointList points = PointsOn(t.nx, t.ny, t.nz, t.d, 12, 50, 0, rng);
        KoCalcPlane plane;  // invalid: the fit starts against z
        ASSERT_TRUE(plane.Fit(points)) << t.nx << " " << t.ny << " " << t.nz;
        ExpectSamePlane(plane, t.nx, t.ny, t.nz, t.d, 1e-9);
        EXPECT_LT(plane.Rms(), 1e-9);
        EXPECT_TRUE(plane.normal.IsUnit(1e-12));
        EXPECT_LE(plane.Rounds(), 3);
    }

    // A steep wall needs a second regression against x when started against z.
    KoCalcPlane wall;
    ASSERT_TRUE(wall.Fit(PointsOn(1, 0.3, -0.2, 7, 12, 50, 0, rng)));
    EXPECT_EQ(wall.Rounds(), 2);
}

TEST(CalcPlane, KeepsDigitsAtSurveyCoordinates)
{
    std::mt19937 rng(3);
    const KoPointList points = PointsOn(0.05, 0.02, 1, 0, 20, 30, 0, rng, 4'512'345.678, 5'432'109.876, 312.5);
    KoCalcPlane plane;
    ASSERT_TRUE(plane.Fit(points));
    EXPECT_LT(plane.Rms(), 1e-6);
    const double len = std::sqrt(0.05 * 0.05 + 0.02 * 0.02 + 1);
    EXPECT_NEAR(plane.Nx(), 0.05 / len, 1e-9);
    EXPECT_NEAR(plane.Ny(), 0.02 / len, 1e-9);
}

TEST(CalcPlane, NoisyFitEqualsTheRegressionOfTheDominantCoordinate)
{
    std::mt19937 rng(11);
    const KoPointList points = PointsOn(0.3, -0.1, 1, -20, 40, 25, 0.05, rng);
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
    const double len = std::sqrt(1 + abc[1] * abc[1] + abc[2] * abc[2]);
    EXPECT_NEAR(plane.Nx(), -abc[1] / len, 1e-10);
    EXPECT_NEAR(plane.Ny(), -abc[2] / len, 1e-10);
    EXPECT_NEAR(plane.Nz(), 1 / len, 1e-10);
    EXPECT_NEAR(plane.D, -abc[0] / len, 1e-9);

    double sum = 0;
    for (const KoPoint& p : points) {
        const double v = (p.z - abc[0] - abc[1] * p.x - abc[2] * p.y) / len;
        sum += v * v;
    }
    EXPECT_NEAR(plane.Rms(), std::sqrt(sum / 40), 1e-10);
    EXPECT_GT(plane.Rms(), 0.02);
}

TEST(CalcPlane, RefusesPointsThatDoNotSpanAPlane)
{
    KoCalcPlane plane(0, 0, 1, -2);
    plane.name = "kept";
    KoPointList points;
    EXPECT_FALSE(plane.Fit(points));
    points.Append(new KoPoint(1, 0, 0, 0, 7));
    points.Append(new KoPoint(2, 1, 1, 1, 7));
    EXPECT_FALSE(plane.Fit(points));
    points.Append(new KoPoint(3, 2, 2, 2, 7));  // collinear, on a skew line
    points.Append(new KoPoint(4, -5, -5, -5, 7));
    EXPECT_FALSE(plane.Fit(points));
    KoPointList same;
    for (uint32_t n = 1; n <= 4; ++n)
        same.Append(new KoPoint(n, 3, 4, 5, 7));
    EXPECT_FALSE(plane.Fit(same));
    KoPointList vertical;  // collinear along z
    for (uint32_t n = 1; n <= 4; ++n)
        vertical.Append(new KoPoint(n, 3, 4, n, 7));
    EXPECT_FALSE(plane.Fit(vertical));
    EXPECT_EQ(plane.Nz(), 1.0);
    EXPECT_EQ(plane.D, -2.0);
    EXPECT_EQ(plane.name.View(), "kept");
}

}  // namespace
