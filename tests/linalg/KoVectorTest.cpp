#include "LinalgTestSupport.h"

#include "geometry/KoPointVector.h"
#include "points/KoPoint.h"

#include <cmath>
#include <numbers>
#include <string>

namespace {

TEST(KoVector, PointModesAndTheDeliberateModeThreeAsymmetry)
{
  const KoPoint p(7, 1.5, -2.5, 4.0, 0);
  EXPECT_TRUE(KoVector(p, 0) == MakeVector({1.5, -2.5, 0.0}));
  EXPECT_TRUE(KoVector(p, 1) == MakeVector({1.5, -2.5, 1.0}));
  EXPECT_TRUE(KoVector(p, 2) == MakeVector({1.5, -2.5, 4.0}));
  // Built from a point, mode 3 is a direction (w = 0); switched to mode 3, a position (w = 1).
  EXPECT_TRUE(KoVector(p, 3) == MakeVector({1.5, -2.5, 4.0, 0.0}));
  KoVector switched = MakeVector({1.5, -2.5, 4.0});
  switched.SetMode(3);
  EXPECT_TRUE(switched == MakeVector({1.5, -2.5, 4.0, 1.0}));
  EXPECT_EQ(KoVector(p, 9).GetDimension(), 4);

  // A 4-vector leaving mode 3 drops w, then mode 0 zeroes z, mode 1 sets it to 1; mode 2 and every mode
  // outside 0 to 3 keep it.
  for (int mode : {0, 1, 2, 4, 9, -1}) {
    KoVector v = MakeVector({1, 2, 3, 1});
    v.SetMode(mode);
    const double expectedZ = mode == 0 ? 0.0 : mode == 1 ? 1.0 : 3.0;
    EXPECT_TRUE(v == MakeVector({1, 2, expectedZ})) << "mode " << mode;
  }
  // A 3-vector keeps its z under modes 0 and 1, and a 4-vector stays as it is under mode 3.
  KoVector keep = MakeVector({1, 2, 3});
  keep.SetMode(0);
  keep.SetMode(1);
  EXPECT_TRUE(keep == MakeVector({1, 2, 3}));
  KoVector four = MakeVector({1, 2, 3, 0.5});
  four.SetMode(3);
  EXPECT_TRUE(four == MakeVector({1, 2, 3, 0.5}));

  KoPoint target;
  KoSetPointCoordinates(target, KoPointCoordinates(p));
  EXPECT_EQ(target.x, 1.5);
  EXPECT_EQ(target.z, 4.0);
  EXPECT_EQ(ThrownCode([&] { KoSetPointCoordinates(target, KoVector(2)); }), 2);
}

TEST(KoVector, ArithmeticCrossProductAndAngles)
{
  const KoVector a = MakeVector({1, 2, 3});
  const KoVector b = MakeVector({-4, 5, 0.5});
  EXPECT_TRUE(a + b == MakeVector({-3, 7, 3.5}));
  EXPECT_TRUE(a - b == MakeVector({5, -3, 2.5}));
  EXPECT_TRUE(a * 2.0 == MakeVector({2, 4, 6}));
  EXPECT_TRUE(2.0 * a == MakeVector({2, 4, 6}));
  EXPECT_DOUBLE_EQ(a * b, -4 + 10 + 1.5);
  const KoVector c = a % b;
  EXPECT_TRUE(c == MakeVector({2 * 0.5 - 3 * 5, 3 * -4 - 1 * 0.5, 1 * 5 - 2 * -4}));
  EXPECT_NEAR(c * a, 0.0, 1e-12);
  EXPECT_NEAR(c * b, 0.0, 1e-12);

  // Exact equality, no tolerance.
  KoVector nearly(a);
  nearly[3] = std::nextafter(3.0, 4.0);
  EXPECT_FALSE(nearly == a);
  EXPECT_FALSE(MakeVector({1, 2}) == MakeVector({1, 2, 0}));

  // Parallel vectors whose normalised scalar product rounds past 1 still give an angle, not NaN.
  const KoVector d = MakeVector({0.1, 0.7, 0.3});
  // (The cosine form itself resolves angles near 0 and pi only to about 1e-8.)
  EXPECT_NEAR(d.Angle(d * 3.0), 0.0, 1e-7);
  EXPECT_NEAR(d.Angle(d * -1.0), std::numbers::pi, 1e-7);
  EXPECT_NEAR(MakeVector({1, 0, 0}).Angle(MakeVector({0, 0, 5})), std::numbers::pi / 2, 1e-15);

  KoVector unit = MakeVector({3, 4, 0});
  EXPECT_FALSE(unit.IsUnit(1e-9));
  unit.Normalize();
  EXPECT_TRUE(unit.IsUnit(1e-12));
  EXPECT_TRUE(MakeVector({1.05, 0}).IsUnit(0.05 + 1e-12));
  EXPECT_FALSE(MakeVector({1.06, 0}).IsUnit(0.05));
}

TEST(KoVector, CopiesAreDeepAcrossBothStorageSizes)
{
  for (int n : {3, 4, 5, 40}) {
    KoVector a(n);
    for (int i = 1; i <= n; ++i) a[i] = i;
    KoVector copy(a);
    KoVector moved(std::move(copy));
    a[1] = -1.0;
    EXPECT_EQ(moved[1], 1.0);
    EXPECT_EQ(moved[n], n);
    EXPECT_EQ(moved.GetDimension(), n);
    KoVector assigned(n);
    assigned = moved;
    moved[n] = 0.0;
    EXPECT_EQ(assigned[n], n);
    assigned.Resize(2);
    EXPECT_TRUE(assigned == KoVector(2));
  }
}

TEST(KoVector, TextFormFiveDecimalsAndThreeBlanks)
{
  std::string text = "stale";
  MakeVector({1, -0.5, 1234567.123456789}).ToString(text);
  EXPECT_EQ(text, "1.00000   -0.50000   1234567.12346   ");
  KoVector(0).ToString(text);
  EXPECT_EQ(text, "");
  // Huge values are written in full rather than cut short.
  MakeVector({1e300}).ToString(text);
  EXPECT_EQ(text.size(), 301u + 6u + 3u);
}

}  // namespace
