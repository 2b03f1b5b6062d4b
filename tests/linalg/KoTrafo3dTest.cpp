#include "LinalgTestSupport.h"

#include "geometry/KoPointVector.h"
#include "geometry/KoTrafo3d.h"
#include "geometry/KoTrafo3dRotation.h"
#include "points/KoPoint.h"
#include "points/KoPointList.h"

#include <Eigen/Geometry>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace {

using Eigen::Matrix3d;
using Eigen::Vector3d;

struct Similarity {
  Matrix3d rotation;
  double scale;
  Vector3d shift;  // p -> scale * rotation * p + shift
  Vector3d operator()(const Vector3d& p) const { return scale * rotation * p + shift; }
};

Matrix3d AxisAngle(Vector3d axis, double angle)
{
  return Eigen::AngleAxisd(angle, axis.normalized()).toRotationMatrix();
}

KoPointList MakeList(const std::vector<Vector3d>& points)
{
  KoPointList list;
  std::uint32_t number = 1;
  for (const Vector3d& p : points) list.AppendCopy(KoPoint(number++, p.x(), p.y(), p.z(), 7));
  return list;
}

Matrix3d ToEigen(const KoMatrix& m)
{
  Matrix3d e;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) e(i, j) = m(i + 1, j + 1);
  }
  return e;
}

Vector3d ToEigen(const KoVector& v)
{
  return {v[1], v[2], v[3]};
}

std::vector<Vector3d> RandomCloud(std::mt19937& random, int n, const Vector3d& centre, double spread)
{
  std::uniform_real_distribution<double> value(-spread, spread);
  std::vector<Vector3d> cloud;
  for (int i = 0; i < n; ++i) cloud.push_back(centre + Vector3d(value(random), value(random), value(random)));
  return cloud;
}

Similarity RandomSimilarity(std::mt19937& random, double shiftSize)
{
  std::normal_distribution<double> gauss;
  std::uniform_real_distribution<double> angle(-std::numbers::pi, std::numbers::pi);
  std::uniform_real_distribution<double> scale(0.5, 2.0);
  std::uniform_real_distribution<double> shift(-shiftSize, shiftSize);
  return {AxisAngle(Vector3d(gauss(random), gauss(random), gauss(random)), angle(random)), scale(random),
          Vector3d(shift(random), shift(random), shift(random))};
}

// Estimates from actual points and their images; checks the result is a proper rotation.
KoTrafo3d EstimateOk(const std::vector<Vector3d>& actual, const std::vector<Vector3d>& target, bool noScale)
{
  KoTrafo3d trafo;
  const KoPointList actualList = MakeList(actual);
  const KoPointList targetList = MakeList(target);
  EXPECT_TRUE(trafo.Estimate(targetList, actualList, static_cast<int>(actual.size()), noScale));
  const Matrix3d r = ToEigen(trafo.GetData().rotation);
  EXPECT_LT((r.transpose() * r - Matrix3d::Identity()).norm(), 1e-12);
  EXPECT_NEAR(r.determinant(), 1.0, 1e-12);
  return trafo;
}

// The per-axis root mean square of target minus mapped actual point.
Vector3d MeanErrors(const std::vector<Vector3d>& actual, const std::vector<Vector3d>& target,
                    const Eigen::Matrix4d& transform)
{
  Vector3d sum = Vector3d::Zero();
  for (size_t i = 0; i < actual.size(); ++i) {
    const Vector3d mapped = (transform * actual[i].homogeneous()).head<3>();
    sum += (target[i] - mapped).cwiseAbs2();
  }
  return (sum / static_cast<double>(actual.size())).cwiseSqrt();
}

// Eigen's SVD-based solution, in coordinates reduced to the first actual point so that survey coordinates
// keep their digits.
Eigen::Matrix4d Umeyama(const std::vector<Vector3d>& actual, const std::vector<Vector3d>& target, bool scaling)
{
  Eigen::Matrix3Xd from(3, actual.size()), to(3, actual.size());
  for (size_t i = 0; i < actual.size(); ++i) {
    from.col(i) = actual[i] - actual[0];
    to.col(i) = target[i] - actual[0];
  }
  Eigen::Matrix4d t = Eigen::umeyama(from, to, scaling);
  t.block<3, 1>(0, 3) += actual[0] - t.block<3, 3>(0, 0) * actual[0];
  return t;
}

Vector3d KoMeanErrors(const KoTrafo3d& trafo)
{
  return {trafo.GetMeanErrorX(), trafo.GetMeanErrorY(), trafo.GetMeanErrorZ()};
}

TEST(KoTrafo3d, RecoversExactSimilaritiesInLocalAndSurveyCoordinates)
{
  std::mt19937 random(3);
  const Vector3d survey(2461366.667847222, 5612345.25, 312.5);
  for (const Vector3d& centre : {Vector3d(1, -2, 3), survey}) {
    for (int n : {3, 4, 9}) {
      for (int round = 0; round < 40; ++round) {
        const Similarity truth = RandomSimilarity(random, 100.0);
        const std::vector<Vector3d> actual = RandomCloud(random, n, centre, 50.0);
        std::vector<Vector3d> target;
        for (const Vector3d& p : actual) target.push_back(truth(p));
        const KoTrafo3d trafo = EstimateOk(actual, target, false);
        EXPECT_LT((ToEigen(trafo.GetData().rotation) - truth.rotation).norm(), 1e-9);
        EXPECT_NEAR(trafo.GetScale(), truth.scale, 1e-9 * truth.scale);
        // The shifts are the centroids, so b - s R a is the translation.
        const Vector3d a = ToEigen(trafo.GetShiftA());
        const Vector3d b = ToEigen(trafo.GetShiftB());
        EXPECT_LT((b - trafo.GetScale() * ToEigen(trafo.GetData().rotation) * a - truth.shift).norm(),
                  1e-9 * std::max(1.0, centre.norm()));
        EXPECT_LT(KoMeanErrors(trafo).maxCoeff(), 1e-9 * std::max(1.0, centre.norm()));
        const Vector3d mapped = ToEigen(trafo.Apply(MakeVector({actual[1].x(), actual[1].y(), actual[1].z()})));
        EXPECT_LT((mapped - target[1]).norm(), 1e-9 * std::max(1.0, centre.norm()));
      }
    }
  }
}

// How the drawing transformation uses the result: one homogeneous matrix T(b) * R * T(-a).
TEST(KoTrafo3d, OfferedRotationCarriesTheScaleForTheHomogeneousMatrix)
{
  const std::vector<Vector3d> actual = {{10, 20, 5}, {110, 20, 5}, {10, 70, 8}, {60, 45, 6.5}};
  const Similarity truth{AxisAngle(Vector3d(0.2, -0.3, 1), 2.0), 1.25, Vector3d(1000, -500, 20)};
  std::vector<Vector3d> target;
  for (const Vector3d& p : actual) target.push_back(truth(p));
  const KoTrafo3d trafo = EstimateOk(actual, target, false);

  KoMatrix shiftB(4, 4), rotation(4, 4), shiftA(4, 4);
  shiftB.Identity();
  rotation.Identity();
  shiftA.Identity();
  const KoMatrix offered = trafo.GetRotation();
  for (int i = 1; i <= 3; ++i) {
    shiftB(i, 4) = trafo.GetShiftB()[i];
    shiftA(i, 4) = -trafo.GetShiftA()[i];
    for (int j = 1; j <= 3; ++j) rotation(i, j) = offered(i, j);
  }
  const KoMatrix m = shiftB * rotation * shiftA;
  for (size_t i = 0; i < actual.size(); ++i) {
    KoPoint point(1, actual[i].x(), actual[i].y(), actual[i].z(), 0);
    ASSERT_TRUE(m.TransformPoint(point));
    EXPECT_LT((Vector3d(point.x, point.y, point.z) - target[i]).norm(), 1e-10);
  }
}

TEST(KoTrafo3d, RotationsNearAndAtHalfTurn)
{
  const std::vector<Vector3d> triangle = {{0, 0, 0}, {30, 0, 0}, {5, 20, 0}};
  const std::vector<Vector3d> tetrahedron = {{0, 0, 0}, {30, 0, 0}, {5, 20, 0}, {7, 3, 15}};
  const std::vector<Vector3d> axes = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}, {1, -2, 0.5}, {0, 1, 1e-9}};
  for (const auto* points : {&triangle, &tetrahedron}) {
    for (const Vector3d& axis : axes) {
      for (double gap : {0.0, 1e-12, 1e-9, 1e-6, 1e-3}) {
        for (double sign : {1.0, -1.0}) {
          const Matrix3d truth = AxisAngle(axis, sign * (std::numbers::pi - gap));
          std::vector<Vector3d> target;
          for (const Vector3d& p : *points) target.push_back(truth * p + Vector3d(3, 4, 5));
          const KoTrafo3d trafo = EstimateOk(*points, target, true);
          EXPECT_LT((ToEigen(trafo.GetData().rotation) - truth).norm(), 1e-9)
              << "axis " << axis.transpose() << " gap " << gap;
          EXPECT_EQ(trafo.GetScale(), 1.0);
        }
      }
    }
  }
}

// A mirror image cannot be reached by a rotation: the estimate stays a proper rotation and is the best one,
// as Eigen's SVD solution (with its own reflection guard) confirms.
TEST(KoTrafo3d, MirrorImagesNeverGiveAReflection)
{
  std::mt19937 random(5);
  const Matrix3d mirror = Eigen::Vector3d(1, 1, -1).asDiagonal();
  for (int n : {4, 6}) {
    for (int round = 0; round < 30; ++round) {
      const std::vector<Vector3d> actual = RandomCloud(random, n, Vector3d(100, 200, 50), 20.0);
      const Similarity move = RandomSimilarity(random, 10.0);
      std::vector<Vector3d> target;
      for (const Vector3d& p : actual) target.push_back(move(mirror * p));
      for (bool noScale : {false, true}) {
        const KoTrafo3d trafo = EstimateOk(actual, target, noScale);
        const Vector3d expected = MeanErrors(actual, target, Umeyama(actual, target, !noScale));
        // The fit of a mirror image is flat around its optimum: compare the total, which is sharp, and
        // each axis loosely.
        EXPECT_LE(KoMeanErrors(trafo).squaredNorm(), expected.squaredNorm() * (1.0 + 1e-12));
        EXPECT_LT((KoMeanErrors(trafo) - expected).norm(), 1e-6 * expected.norm());
      }
    }
  }
  // Three points are always coplanar: turning their plane over matches the mirror image exactly.
  const std::vector<Vector3d> triangle = {{0, 0, 0}, {4, 0, 1}, {1, 3, 2}};
  std::vector<Vector3d> mirrored;
  for (const Vector3d& p : triangle) mirrored.push_back(mirror * p);
  const KoTrafo3d trafo = EstimateOk(triangle, mirrored, false);
  EXPECT_NEAR(trafo.GetScale(), 1.0, 1e-12);
  EXPECT_LT(KoMeanErrors(trafo).maxCoeff(), 1e-12);
}

TEST(KoTrafo3d, NoisyPairsMatchAnIndependentSolution)
{
  std::mt19937 random(9);
  std::normal_distribution<double> noise(0.0, 0.02);
  const Vector3d survey(2461366.667847222, 5612345.25, 312.5);
  for (int n : {3, 4, 8}) {
    for (int round = 0; round < 30; ++round) {
      const Similarity truth = RandomSimilarity(random, 500.0);
      const std::vector<Vector3d> actual = RandomCloud(random, n, survey, 200.0);
      std::vector<Vector3d> target;
      for (const Vector3d& p : actual) target.push_back(truth(p) + Vector3d(noise(random), noise(random), noise(random)));
      for (bool noScale : {false, true}) {
        const KoTrafo3d trafo = EstimateOk(actual, target, noScale);
        const Eigen::Matrix4d reference = Umeyama(actual, target, !noScale);
        const double referenceScale = std::cbrt(reference.block<3, 3>(0, 0).determinant());
        EXPECT_NEAR(trafo.GetScale(), referenceScale, 1e-10);
        EXPECT_LT((ToEigen(trafo.GetData().rotation) - reference.block<3, 3>(0, 0) / referenceScale).norm(), 1e-9);
        const Vector3d expected = MeanErrors(actual, target, reference);
        EXPECT_LT((KoMeanErrors(trafo) - expected).norm(), 1e-9 + 1e-7 * expected.norm()) << n;
      }
    }
  }
}

TEST(KoTrafo3d, ForbiddenScaleKeepsTheRotationAndLeavesTheErrors)
{
  const std::vector<Vector3d> actual = {{1, 2, 3}, {11, 2, 3}, {1, 12, 4}};
  std::vector<Vector3d> doubled;
  for (const Vector3d& p : actual) doubled.push_back(2.0 * p);
  const KoTrafo3d fixed = EstimateOk(actual, doubled, true);
  EXPECT_EQ(fixed.GetScale(), 1.0);
  EXPECT_LT((ToEigen(fixed.GetData().rotation) - Matrix3d::Identity()).norm(), 1e-15);
  EXPECT_GT(KoMeanErrors(fixed).maxCoeff(), 1.0);
  EXPECT_NEAR(EstimateOk(actual, doubled, false).GetScale(), 2.0, 1e-14);
}

TEST(KoTrafo3d, PairsByNumberNotByListPosition)
{
  KoPointList actual, target;
  const double coords[][3] = {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}};
  for (std::uint32_t number : {3u, 9u, 1u, 2u}) {
    const double* c = coords[number == 9 ? 0 : number - 1];
    actual.AppendCopy(KoPoint(number, number == 9 ? 1e6 : c[0], c[1], c[2], 0));
  }
  for (std::uint32_t number : {2u, 1u, 3u}) {
    const double* c = coords[number - 1];
    target.AppendCopy(KoPoint(number, c[0] + 5, c[1], c[2], 0));
  }
  KoTrafo3d trafo;
  ASSERT_TRUE(trafo.Estimate(target, actual, 3, false));
  EXPECT_NEAR(trafo.GetScale(), 1.0, 1e-14);
  EXPECT_EQ(trafo.GetStatus(), 1);
  // Number 4 exists in neither list.
  EXPECT_FALSE(trafo.Estimate(target, actual, 4, false));
  EXPECT_EQ(trafo.GetStatus(), 0);
}

TEST(KoTrafo3d, DegenerateInputFailsWithoutNaN)
{
  const Vector3d survey(2461366.667847222, 5612345.25, 312.5);
  const Vector3d direction = Vector3d(0.6, 0.8, 0.01).normalized();
  std::vector<Vector3d> line, spot, good = {survey, survey + Vector3d(50, 0, 0), survey + Vector3d(0, 40, 1)};
  for (int k = 0; k < 4; ++k) {
    line.push_back(survey + (37.0 * k) * direction);
    spot.push_back(survey);
  }
  const std::vector<Vector3d> good4 = {good[0], good[1], good[2], survey + Vector3d(10, 10, 30)};
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    const char* what;
    std::vector<Vector3d> actual, target;
    int pairs;
  };
  const std::vector<Case> cases = {
      {"collinear actual (3)", {line[0], line[1], line[3]}, good, 3},
      {"collinear actual (4)", line, good4, 4},
      {"collinear target", good4, line, 4},
      {"coincident actual", spot, good4, 4},
      {"coincident target", good4, spot, 4},
      {"two pairs", good, good, 2},
      {"no pairs", good, good, 0},
      {"not a number", {good[0], good[1], Vector3d(nan, 0, 0)}, good, 3},
      {"infinite", good, {good[0], good[1], Vector3d(0, HUGE_VAL, 0)}, 3},
  };
  for (const Case& c : cases) {
    for (bool noScale : {false, true}) {
      KoTrafo3d trafo;
      EXPECT_FALSE(trafo.Estimate(MakeList(c.target), MakeList(c.actual), c.pairs, noScale)) << c.what;
      for (int i = 1; i <= 3; ++i) {
        EXPECT_FALSE(std::isnan(trafo.GetShiftA()[i]) || std::isnan(trafo.GetShiftB()[i])) << c.what;
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(trafo.GetData().rotation(i, j), 0.0) << c.what;
      }
      EXPECT_EQ(trafo.GetScale(), 1.0);
      EXPECT_EQ(trafo.GetMeanErrorX(), 0.0);
    }
  }
  // A failure after a success leaves no stale result behind.
  KoTrafo3d trafo;
  ASSERT_TRUE(trafo.Estimate(MakeList(good4), MakeList(good4), 4, false));
  ASSERT_FALSE(trafo.Estimate(MakeList(good4), MakeList(line), 4, false));
  EXPECT_EQ(trafo.GetData().rotation(1, 1), 0.0);
}

// The largest eigenvalue is the sum of the singular values (the smallest signed by the determinant).
TEST(KoTrafo3d, FixedPointIterationAndItsBounds)
{
  int rounds = 0;
  bool converged = false;
  const double s1 = 0.8, s2 = 0.5, s3 = 0.2;
  const double norm2 = s1 * s1 + s2 * s2 + s3 * s3;
  const double p = 1.0;
  const double q = (s1 * s1 * s2 * s2 + s1 * s1 * s3 * s3 + s2 * s2 * s3 * s3) / (norm2 * norm2);
  const double r = s1 * s2 * s3 / (norm2 * std::sqrt(norm2));
  EXPECT_NEAR(KoLargestRootIteration(p, q, r, rounds, converged), (s1 + s2 + s3) / std::sqrt(norm2), 1e-10);
  EXPECT_TRUE(converged);
  EXPECT_LT(rounds, 30);

  // A first result within 1e-10 of the start ends the iteration at once (collinear points give exactly 1).
  EXPECT_EQ(KoLargestRootIteration(1.0, 0.0, 0.0, rounds, converged), 1.0);
  EXPECT_EQ(rounds, 1);
  EXPECT_NEAR(KoLargestRootIteration(1.0, 1e-22, 0.0, rounds, converged), 1.0, 1e-10);
  EXPECT_EQ(rounds, 1);

  // Near a mirror image (negative determinant) the iteration can swing for ever: it stops after 200 rounds.
  EXPECT_TRUE(std::isfinite(KoLargestRootIteration(1.0, 0.22, -0.1, rounds, converged)));
  EXPECT_EQ(rounds, 200);
  EXPECT_FALSE(converged);
  KoLargestRootIteration(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0, rounds, converged);
  EXPECT_EQ(rounds, 200);
}

}  // namespace
