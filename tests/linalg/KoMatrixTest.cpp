#include "LinalgTestSupport.h"

#include "points/KoPoint.h"
#include "points/KoPointList.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstring>
#include <string>

namespace {

using ::testing::ElementsAre;

TEST(KoMatrix, ProductsTransposeAndScalars)
{
  const KoMatrix a = MakeMatrix({{1, 2, 3}, {4, 5, 6}});
  const KoMatrix b = MakeMatrix({{7, 8}, {9, 10}, {11, 12}});
  EXPECT_EQ(MaxAbsDifference(a * b, MakeMatrix({{58, 64}, {139, 154}})), 0.0);
  EXPECT_EQ(MaxAbsDifference(a.Transpose(), MakeMatrix({{1, 4}, {2, 5}, {3, 6}})), 0.0);
  EXPECT_TRUE(a * MakeVector({1, 0, -1}) == MakeVector({-2, -2}));
  EXPECT_EQ(MaxAbsDifference(2.0 * a - a / 0.5, KoMatrix(2, 3)), 0.0);
  KoMatrix c(a);
  c += a;
  c -= a * 3.0;
  EXPECT_EQ(MaxAbsDifference(c, a * -1.0), 0.0);
  // Large matrices live on the heap; copies stay independent of the original.
  KoMatrix big(5, 5);
  big.Identity();
  KoMatrix copy(big);
  big(5, 5) = 3.0;
  EXPECT_EQ(copy(5, 5), 1.0);
  EXPECT_EQ(big[5][5], 3.0);
  KoMatrix moved(std::move(big));
  EXPECT_EQ(moved(5, 5), 3.0);
}

TEST(KoMatrix, IdentityTestAcceptsZerosOnTheDiagonal)
{
  KoMatrix m(3, 3);
  EXPECT_TRUE(m.IsIdentity());
  m.Identity();
  EXPECT_TRUE(m.IsIdentity());
  m(2, 2) = 0.0;
  EXPECT_TRUE(m.IsIdentity());
  m(2, 2) = 2.0;
  EXPECT_FALSE(m.IsIdentity());
  m.Identity();
  m(1, 3) = 1e-300;
  EXPECT_FALSE(m.IsIdentity());
}

TEST(KoMatrix, RowOperationsRowsColumnsAndOuterProducts)
{
  KoMatrix m = MakeMatrix({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  m.SwapLines(1, 3);
  m.MultLine(2, 2, 10.0);         // to the last column
  m.AddLines(3, 1, 1, -1.0, 2);   // columns 1 and 2 only
  EXPECT_EQ(MaxAbsDifference(m, MakeMatrix({{7, 8, 9}, {4, 50, 60}, {-6, -6, 3}})), 0.0);

  KoVector row(2);
  m.GetRow(2, row);
  EXPECT_TRUE(row == MakeVector({4, 50}));
  m.SetColumn(3, MakeVector({-1, -2, -3}));
  KoVector column(3);
  m.GetColumn(3, column);
  EXPECT_TRUE(column == MakeVector({-1, -2, -3}));

  // Only the upper-left block of the size of the observation vector collects the products.
  KoMatrix normal(3, 5);
  normal.AddOuterProduct(MakeVector({1, 2}));
  normal.AddOuterProduct(MakeVector({1, 2}));
  EXPECT_EQ(MaxAbsDifference(normal, MakeMatrix({{2, 4, 0, 0, 0}, {4, 8, 0, 0, 0}, {0, 0, 0, 0, 0}})), 0.0);

  std::string text;
  MakeMatrix({{1, 2}, {3, 4.123456}}).ToString(text);
  EXPECT_EQ(text, "1.00000   2.00000   3.00000   4.12346   ");
}

TEST(KoMatrix, SolveAndInvertKnownAndRandomSystems)
{
  KoMatrix a = MakeMatrix({{2, 1, -1}, {-3, -1, 2}, {-2, 1, 2}});
  KoMatrix b = MakeMatrix({{8, 1}, {-11, 0}, {-3, 0}});
  ASSERT_EQ(a.Solve(b), 0);
  EXPECT_LT(MaxAbsDifference(b, MakeMatrix({{2, 4}, {3, -2}, {-1, 5}})), 1e-14);

  std::mt19937 random(7);
  for (int n = 1; n <= 7; ++n) {
    for (int round = 0; round < 20; ++round) {
      const KoMatrix m = RandomWellConditioned(n, random);
      int status = -1;
      const KoMatrix inverse = m.Inverse(&status);
      ASSERT_EQ(status, 0);
      KoMatrix identity(n, n);
      identity.Identity();
      EXPECT_LT(MaxAbsDifference(m * inverse, identity), 1e-13) << n;
      EXPECT_LT(MaxAbsDifference(inverse * m, identity), 1e-13) << n;
      // Solving with the matrix itself as right-hand side gives the identity again.
      KoMatrix work(m);
      KoMatrix rhs(m);
      ASSERT_EQ(work.Solve(rhs), 0);
      EXPECT_LT(MaxAbsDifference(rhs, identity), 1e-13);
    }
  }

  KoMatrix singular = MakeMatrix({{1, 2}, {2, 4}});
  EXPECT_EQ(singular.Invert(), 1);
  // The threshold is absolute: a regular but tiny matrix counts as singular.
  KoMatrix tiny = MakeMatrix({{1e-11, 0}, {0, 1e-11}});
  EXPECT_EQ(tiny.Invert(), 1);
  // Exchanging rows solves a system whose first pivot is zero.
  KoMatrix swapped = MakeMatrix({{0, 1}, {1, 0}});
  KoMatrix rhs = MakeMatrix({{3}, {5}});
  ASSERT_EQ(swapped.Solve(rhs), 0);
  EXPECT_TRUE(rhs(1, 1) == 5.0 && rhs(2, 1) == 3.0);
}

bool SameBits(const KoMatrix& a, const KoMatrix& b)
{
  for (int i = 1; i <= a.GetRows(); ++i) {
    for (int j = 1; j <= a.GetColumns(); ++j) {
      const double x = a.GetElem(i, j), y = b.GetElem(i, j);
      if (std::memcmp(&x, &y, sizeof x) != 0) return false;
    }
  }
  return true;
}

// The 3x3 and 4x4 inversion has a kernel of its own (the identity carried implicitly, rows in registers).
// It must call exactly the same matrices singular as solving against the identity, and give the same
// inverse bit for bit: a transformation must not move by a rounding depending on which path inverted it.
TEST(KoMatrix, InvertAgreesWithSolvingAgainstTheIdentity)
{
  std::mt19937 random(13);
  std::uniform_real_distribution<double> value(-1.0, 1.0);
  std::uniform_int_distribution<int> exponent(-6, 6);
  int singularCount = 0;
  for (int n : {2, 3, 4, 5}) {
    for (int round = 0; round < (n == 3 || n == 4 ? 3000 : 300); ++round) {
      KoMatrix m(n, n);
      for (int i = 1; i <= n; ++i) {
        const double rowScale = std::pow(10.0, exponent(random));
        for (int j = 1; j <= n; ++j) m(i, j) = value(random) * rowScale;
      }
      if (round % 5 == 1) {  // a dependent row
        for (int j = 1; j <= n; ++j) m(n, j) = 3.0 * m(1, j) - m(2, j);
      }
      if (round % 7 == 2) {  // a zero row or a zero column
        for (int k = 1; k <= n; ++k) (round % 2 ? m(k, 2) : m(2, k)) = 0.0;
      }
      KoMatrix inverse(m);
      const int status = inverse.Invert();
      KoMatrix work(m);
      KoMatrix solved(n, n);
      solved.Identity();
      const int solveStatus = work.Solve(solved);
      ASSERT_EQ(status, solveStatus) << n << " " << round;
      singularCount += status;
      // Inverse() reads this matrix and writes a fresh one; in place or not, the arithmetic is the same.
      int freshStatus = -1;
      const KoMatrix fresh = m.Inverse(&freshStatus);
      ASSERT_EQ(freshStatus, status) << n << " " << round;
      if (status == 0) {
        ASSERT_TRUE(SameBits(inverse, solved)) << n << " " << round;
        ASSERT_TRUE(SameBits(fresh, inverse)) << n << " " << round;
      }
    }
  }
  EXPECT_GT(singularCount, 1000);  // the dependent rows and zero lines above
}

// Pivot rules seen from outside: the chosen pivot decides whether the last pivot stays above the
// threshold, so a wrong choice shows as a wrong status. Each 2x2 case is also embedded in a 3x3 and a 4x4
// matrix (with an identity block), which take the small-matrix kernel.
TEST(KoMatrix, InvertPivotsLikeTheGeneralElimination)
{
  auto embedded = [](const KoMatrix& block, int n) {
    KoMatrix m(n, n);
    m.Identity();
    for (int i = 1; i <= 2; ++i) {
      for (int j = 1; j <= 2; ++j) m(i, j) = block(i, j);
    }
    return m;
  };
  // Row 1 has the larger element, row 2 the larger element relative to its row sum; eliminating with
  // row 1 would leave a last pivot of 7e-11 (singular), with row 2 one of 1.4e-10.
  const KoMatrix scaled = MakeMatrix({{2, 1000}, {1, 500 - 7e-11}});
  // Equal ratios 1 / (1 + b) and 2 / (2 + 2b), exactly also in floating point: keeping the upper row
  // leaves a last pivot of -4b = -1.6e-10, taking the lower one 2b = 8e-11.
  const double b = 4e-11;
  const KoMatrix tie = MakeMatrix({{1, b}, {2, -2 * b}});
  for (int n : {2, 3, 4}) {
    for (const KoMatrix* block : {&scaled, &tie}) {
      const KoMatrix m = embedded(*block, n);
      int status = -1;
      const KoMatrix inverse = m.Inverse(&status);
      ASSERT_EQ(status, 0) << n;
      KoMatrix identity(n, n);
      identity.Identity();
      // The inverse is large (up to 1e13); the product is still the identity to a few digits.
      EXPECT_LT(MaxAbsDifference(m * inverse, identity), 1e-2) << n;
    }
  }
  // A pivot of 1e-12 among rows of size 1 would spread rounding errors of 1e-4 over the inverse.
  const KoMatrix tiny = embedded(MakeMatrix({{1e-12, 1}, {1, 1}}), 4);
  const KoMatrix inverse = tiny.Inverse();
  const KoMatrix expected = embedded(MakeMatrix({{-1 / (1 - 1e-12), 1 / (1 - 1e-12)},
                                                 {1 / (1 - 1e-12), -1e-12 / (1 - 1e-12)}}), 4);
  EXPECT_LT(MaxAbsDifference(inverse, expected), 1e-15);
}

TEST(KoMatrix, DeterminantNeverSearchesTheLastRow)
{
  EXPECT_NEAR(MakeMatrix({{2, 1, -1}, {-3, -1, 2}, {-2, 1, 2}}).Determinant(), -1.0, 1e-14);
  EXPECT_EQ(MakeMatrix({{-4.5}}).Determinant(), -4.5);
  EXPECT_EQ(MakeMatrix({{1e-11}}).Determinant(), 0.0);
  // The only usable pivot of column 1 is in the last row: 0.0, although Solve copes (above).
  const KoMatrix swapped = MakeMatrix({{0, 1}, {1, 0}});
  EXPECT_EQ(swapped.Determinant(), 0.0);
  EXPECT_EQ(swapped(1, 2), 1.0);  // works on a copy
  EXPECT_EQ(MakeMatrix({{1, 2, 3}, {0, 0, 0}, {4, 5, 7}}).Determinant(), 0.0);
  // A row exchange among the searched rows flips the sign.
  EXPECT_NEAR(MakeMatrix({{0, 1, 0}, {1, 0, 0}, {0, 0, 1}}).Determinant(), -1.0, 1e-15);

  std::mt19937 random(11);
  for (int round = 0; round < 50; ++round) {
    const KoMatrix m = RandomWellConditioned(3, random);
    EXPECT_NEAR(m.Determinant(), m.Determinant3(), 1e-12 * std::fabs(m.Determinant3()));
    const KoMatrix p = RandomWellConditioned(5, random);
    const KoMatrix q = RandomWellConditioned(5, random);
    EXPECT_NEAR((p * q).Determinant(), p.Determinant() * q.Determinant(),
                1e-12 * std::fabs(p.Determinant() * q.Determinant()));
    const KoVector rhs = MakeVector({1.0, -2.0, 0.25});
    KoMatrix work(m);
    KoMatrix b(3, 1);
    b.SetColumn(1, rhs);
    ASSERT_EQ(work.Solve(b), 0);
    const KoVector cramer = m.SolveCramer3(rhs);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(cramer[i], b(i, 1), 1e-14);
  }
}

// Least-squares line y = c0 + c1 t through augmented normal equations.
TEST(KoMatrix, CholeskySolveOfAugmentedNormalEquations)
{
  const double t[] = {0.0, 1.0, 2.0, 3.0, 4.0};
  const double y[] = {1.1, 2.9, 5.2, 6.8, 9.1};
  KoMatrix normal(3, 5);
  normal(1, 4) = 1.0;
  normal(2, 5) = 1.0;
  double st = 0, sy = 0, stt = 0, sty = 0;
  for (int k = 0; k < 5; ++k) {
    normal.AddOuterProduct(MakeVector({1.0, t[k], y[k]}));
    st += t[k];
    sy += y[k];
    stt += t[k] * t[k];
    sty += t[k] * y[k];
  }
  const double slope = (5 * sty - st * sy) / (5 * stt - st * st);
  const double intercept = (sy - slope * st) / 5;
  double vv = 0.0;
  for (int k = 0; k < 5; ++k) vv += std::pow(y[k] - intercept - slope * t[k], 2);

  KoVector solution(2);
  EXPECT_NEAR(normal.CholeskySolve(solution), vv, 1e-12);
  EXPECT_NEAR(solution[1], intercept, 1e-13);
  EXPECT_NEAR(solution[2], slope, 1e-13);

  // A negative square on the diagonal stops the solve: nothing is written.
  KoMatrix indefinite(3, 5);
  indefinite(1, 1) = -1.0;
  indefinite(2, 2) = 1.0;
  KoVector untouched = MakeVector({-7, -7});
  EXPECT_EQ(indefinite.CholeskySolve(untouched), 0.0);
  EXPECT_TRUE(untouched == MakeVector({-7, -7}));
  // A square of exactly zero (one observation at t = 1) does not stop it: the solution is written, and its
  // infinities tell the caller.
  KoMatrix degenerate(3, 5);
  degenerate(1, 4) = 1.0;
  degenerate(2, 5) = 1.0;
  degenerate.AddOuterProduct(MakeVector({1.0, 1.0, 2.0}));
  KoVector written = MakeVector({-7, -7});
  degenerate.CholeskySolve(written);
  EXPECT_FALSE(std::isfinite(written[1]) && std::isfinite(written[2])) << written[1] << " " << written[2];
  KoVector tooShort(1);
  EXPECT_EQ(ThrownCode([&] { indefinite.CholeskySolve(tooShort); }), 2);
}

TEST(KoMatrix, HomogeneousPointTransforms)
{
  // Plane similarity: rotate by 90 degrees, scale 2, shift (10, 20).
  const KoMatrix plane = MakeMatrix({{0, -2, 10}, {2, 0, 20}, {0, 0, 1}});
  double x = 1.0, y = 0.0;
  ASSERT_TRUE(plane.TransformPoint(x, y));
  EXPECT_THAT((std::array{x, y}), ElementsAre(10.0, 22.0));

  KoMatrix space(4, 4);
  space.Identity();
  space(1, 4) = 5.0;
  space(4, 4) = 2.0;  // a uniform weight divides every coordinate
  double px = 1.0, py = 2.0, pz = 3.0;
  ASSERT_TRUE(space.TransformPoint(px, py, pz));
  EXPECT_THAT((std::array{px, py, pz}), ElementsAre(3.0, 1.0, 1.5));

  // A bottom row that gives w = 0 at this point leaves it unchanged.
  KoMatrix vanishing(4, 4);
  vanishing.Identity();
  vanishing(4, 1) = 2.0;
  vanishing(4, 4) = 0.0;
  double vx = 0.0, vy = 4.0, vz = 5.0;
  EXPECT_FALSE(vanishing.TransformPoint(vx, vy, vz));
  EXPECT_THAT((std::array{vx, vy, vz}), ElementsAre(0.0, 4.0, 5.0));

  KoPointList list;
  EXPECT_EQ(space.TransformPoints(nullptr), 0);
  EXPECT_EQ(space.TransformPoints(&list), 0);
  list.AppendCopy(KoPoint(1, 1.0, 2.0, 3.0, 0));
  list.AppendCopy(KoPoint(2, 0.0, 4.0, 5.0, 0));
  EXPECT_EQ(vanishing.TransformPoints(&list), 2);  // visited, although the second one stays
  EXPECT_EQ(list.First()->x, 0.5);
  EXPECT_EQ(KoPointList::Next(list.First())->y, 4.0);
  // A 3x3 matrix moves a point in its plane and keeps z.
  KoPoint point(3, 1.0, 0.0, 7.0, 0);
  ASSERT_TRUE(plane.TransformPoint(point));
  EXPECT_THAT((std::array{point.x, point.y, point.z}), ElementsAre(10.0, 22.0, 7.0));
}

}  // namespace
