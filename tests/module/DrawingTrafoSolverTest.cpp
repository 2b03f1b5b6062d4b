// The solution from point pairs: matrices checked by mapping the points, texts as the surveyor reads them.
#include "transform/DrawingTrafoSolver.h"

#include "host/Transcript.h"
#include "points/KoPointList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Pair {
  KoPoint actual;
  KoPoint target;
};

KoPoint at(double x, double y, double z) { return KoPoint(0, x, y, z, 0); }

AcGePoint3d mapped(const AcGeMatrix3d& m, const KoPoint& p) { return m.transform({p.x, p.y, p.z}); }

void expectNear(const AcGePoint3d& p, const KoPoint& q, double tolerance = 1e-9) {
  EXPECT_NEAR(p.x, q.x, tolerance);
  EXPECT_NEAR(p.y, q.y, tolerance);
  EXPECT_NEAR(p.z, q.z, tolerance);
}

class SolverTest : public ::testing::Test {
 protected:
  void SetUp() override { host::setTraceEnabled(true); }
  void TearDown() override { host::setTraceEnabled(false); }

  // Solves and collects the debug trace lines the solution sent.
  DrawingTrafoSolution solve(const std::vector<Pair>& pairs, bool scale) {
    actual_.DeleteAll();
    target_.DeleteAll();
    for (const Pair& p : pairs) {
      actual_.AppendCopy(p.actual);
      target_.AppendCopy(p.target);
    }
    ::testing::internal::CaptureStderr();
    DrawingTrafoSolution solution = SolveDrawingTrafo(actual_, target_, scale);
    std::istringstream lines(::testing::internal::GetCapturedStderr());
    trace_.clear();
    for (std::string line; std::getline(lines, line);) trace_.push_back(line.substr(line.find(' ') + 1));
    return solution;
  }

  KoPointList actual_;
  KoPointList target_;
  std::vector<std::string> trace_;
};

TEST_F(SolverTest, NoPairOrOnePair) {
  DrawingTrafoSolution s = solve({}, true);
  EXPECT_EQ(s.preview, L"Es ist noch keine Transformation definiert");
  EXPECT_FALSE(s.okEnabled);
  EXPECT_TRUE(s.matrix.isEqualTo(AcGeMatrix3d::kIdentity));

  s = solve({{at(1, 2, 3), at(11, 12, 13)}}, true);
  EXPECT_EQ(s.preview, L"Verschiebung um 10.000 10.000 10.000");
  EXPECT_TRUE(s.okEnabled);
  AcGeMatrix3d shift;
  shift(0, 3) = shift(1, 3) = shift(2, 3) = 10.0;
  EXPECT_TRUE(s.matrix.isEqualTo(shift, AcGeTol()));

  // A target far out: each number of the line is 161 digits before the point, and the line still shows.
  s = solve({{at(0, 0, 0), at(1e160, 1e160, 1e160)}}, true);
  const std::wstring number = L"1" + std::wstring(160, L'0');
  ASSERT_EQ(s.preview.substr(0, 16), L"Verschiebung um ");
  EXPECT_EQ(s.preview.size(), 16 + 3 * (number.size() + 4) + 2);
  EXPECT_NE(s.preview.find(L".000 "), std::wstring::npos);
}

TEST_F(SolverTest, TwoPairsTurnAndScaleAboutTheFirstActualPoint) {
  const std::vector<Pair> pairs = {{at(0, 0, 0), at(5, 5, 0)}, {at(1, 0, 0), at(5, 7, 0)}};
  DrawingTrafoSolution s = solve(pairs, false);
  EXPECT_EQ(s.preview, L"2½D Transformation\nVerschiebung um 5.000 5.000 0.000\nDrehung in XY um 90.00°\n"
                       L"Keine Skalierung. (Skalierungsfaktor wäre 2.000000)");
  EXPECT_TRUE(s.okEnabled);
  expectNear(mapped(s.matrix, at(1, 0, 0)), at(5, 6, 0));
  expectNear(mapped(s.matrix, at(0, 0, 0)), at(5, 5, 0));
  EXPECT_EQ(trace_, std::vector<std::string>{"CalcTrafo 2"});

  s = solve(pairs, true);
  EXPECT_EQ(s.preview, L"2½D Transformation\nVerschiebung um 5.000 5.000 0.000\nDrehung in XY um 90.00°\n"
                       L"Skalierungsfaktor 2.000000");
  expectNear(mapped(s.matrix, at(1, 0, 0)), at(5, 7, 0));
  // Heights scale about A1 as well.
  expectNear(mapped(s.matrix, at(0, 0, 1)), at(5, 5, 2));

  // A first actual point away from the origin: the turn is about it, not about the origin.
  s = solve({{at(10, 10, 5), at(20, 10, 5)}, {at(11, 10, 5), at(20, 11, 5)}}, false);
  expectNear(mapped(s.matrix, at(10, 10, 5)), at(20, 10, 5));
  expectNear(mapped(s.matrix, at(12, 10, 7)), at(20, 12, 7));
}

TEST_F(SolverTest, TwoPairsHaveNoToleranceOnTheFactor) {
  // Equal distances, box checked: the factor 1 is still reported as a scale.
  DrawingTrafoSolution s = solve({{at(0, 0, 0), at(3, 0, 0)}, {at(0, 4, 0), at(3, 4, 0)}}, true);
  EXPECT_EQ(s.preview, L"2½D Transformation\nVerschiebung um 3.000 0.000 0.000\nDrehung in XY um 0.00°\n"
                       L"Skalierungsfaktor 1.000000");

  // Coincident actual points: the factor is not a number, and the preview says so without a crash.
  s = solve({{at(1, 1, 1), at(7, 7, 7)}, {at(1, 1, 1), at(7, 7, 7)}}, false);
  EXPECT_NE(s.preview.find(L"(Skalierungsfaktor wäre "), std::wstring::npos);
  EXPECT_NE(s.preview.find(L"nan)"), std::wstring::npos);
}

TEST_F(SolverTest, ThreePairsSolveInSpaceAndForceTheDiagonalWithoutScale) {
  // Targets: turned by 30° about Z, scaled by 2, shifted.
  const double c = std::cos(std::numbers::pi / 6), s30 = std::sin(std::numbers::pi / 6);
  auto target = [&](double x, double y, double z) {
    return at(2 * (c * x - s30 * y) + 100, 2 * (s30 * x + c * y) + 200, 2 * z + 300);
  };
  const std::vector<Pair> pairs = {
      {at(0, 0, 0), target(0, 0, 0)}, {at(10, 0, 1), target(10, 0, 1)}, {at(0, 10, 2), target(0, 10, 2)}};

  DrawingTrafoSolution s = solve(pairs, true);
  EXPECT_EQ(s.preview, L"3D Transformation\nZeichnung Skalieren 2.000000\nMittlere Fehler: x: 0.000 y: 0.000 z: 0.000");
  EXPECT_TRUE(s.okEnabled);
  for (const Pair& p : pairs) expectNear(mapped(s.matrix, p.actual), p.target, 1e-6);
  // The mean of the first and third point joined both lists.
  EXPECT_EQ(actual_.Count(), 4u);
  EXPECT_DOUBLE_EQ(actual_.At(3)->z, 1.0);
  EXPECT_EQ(actual_.At(3)->number, 4u);

  s = solve(pairs, false);
  EXPECT_EQ(s.preview, L"3D Transformation\nZeichnung nicht skalieren");
  // Exactly 1 on the diagonal, though the rotation's cosines belong there; the sines stay.
  EXPECT_EQ(s.matrix(0, 0), 1.0);
  EXPECT_EQ(s.matrix(1, 1), 1.0);
  EXPECT_EQ(s.matrix(2, 2), 1.0);
  EXPECT_NEAR(s.matrix(0, 1), -s30, 1e-9);
  EXPECT_NEAR(s.matrix(1, 0), s30, 1e-9);

  // Collinear points fix no rotation.
  s = solve({{at(0, 0, 0), at(1, 0, 0)}, {at(1, 0, 0), at(2, 0, 0)}, {at(2, 0, 0), at(3, 0, 0)}}, true);
  EXPECT_EQ(s.preview, L"Berechnung der Transformation nicht möglich");
  EXPECT_FALSE(s.okEnabled);
  EXPECT_TRUE(s.matrix.isEqualTo(AcGeMatrix3d::kIdentity));
}

TEST_F(SolverTest, FourPairsUseAllOfThemAndMoreLeaveTheDialogAlone) {
  std::vector<Pair> pairs = {{at(0, 0, 0), at(1, 0, 0)},
                             {at(10, 0, 0), at(11, 0, 0)},
                             {at(0, 10, 0), at(1, 10, 0)},
                             {at(0, 0, 10), at(1, 0, 10)}};
  DrawingTrafoSolution s = solve(pairs, false);
  EXPECT_EQ(s.preview, L"3D Transformation\nKeine Skalierung");
  EXPECT_TRUE(s.updatesDialog);
  expectNear(mapped(s.matrix, at(5, 5, 5)), at(6, 5, 5), 1e-6);
  EXPECT_EQ(trace_.at(0), "3D Matrix");

  s = solve(pairs, true);
  EXPECT_EQ(s.preview, L"3D Transformation\nSkalierungsfaktor 1.000000");

  pairs.push_back({at(5, 5, 5), at(6, 5, 5)});
  s = solve(pairs, true);
  EXPECT_FALSE(s.updatesDialog);
  EXPECT_TRUE(s.matrix.isEqualTo(AcGeMatrix3d::kIdentity));
  EXPECT_EQ(trace_, std::vector<std::string>{"CalcTrafo Unknown"});
}

TEST(FormatMessageTextTest, OnlyItsOwnEscapesChangeTheText) {
  EXPECT_EQ(FormatMessageText(L"2½D Transformation\nDrehung in XY um -0.85°"),
            L"2½D Transformation\nDrehung in XY um -0.85°");
  EXPECT_EQ(FormatMessageText(L"100%% %. %! %n%x 5%"), L"100% . ! \n%x 5%");
  EXPECT_EQ(FormatMessageText(L"bis hier%0 und nicht weiter"), L"bis hier");
}

}  // namespace
