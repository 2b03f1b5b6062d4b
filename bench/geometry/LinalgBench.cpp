// KoMatrix and KoTrafo3d side by side with Eigen doing the same work.

#include "geometry/KoMatrix.h"
#include "geometry/KoTrafo3d.h"
#include "points/KoPoint.h"
#include "points/KoPointList.h"

#include <Eigen/Dense>
#include <Eigen/Geometry>
#include <benchmark/benchmark.h>

#include <random>

namespace {

// A well-conditioned 4x4 matrix like a drawing transformation: rotation, scale and a survey-sized shift.
const double kMatrix[4][4] = {
    {0.8, -0.6, 0.05, 2461366.667},
    {0.6, 0.79, -0.1, 5612345.25},
    {-0.02, 0.1, 1.01, 312.5},
    {0.001, 0.002, 0.0, 1.0},
};
const double kOther[4][4] = {
    {1.0, 0.2, 0.3, 10.0},
    {-0.2, 1.0, 0.1, 20.0},
    {0.3, -0.1, 1.0, 30.0},
    {0.0, 0.0, 0.0, 1.0},
};

KoMatrix MakeKo(const double (&values)[4][4])
{
  KoMatrix m(4, 4);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) m(i + 1, j + 1) = values[i][j];
  }
  return m;
}

template <class Matrix>
Matrix MakeEigen(const double (&values)[4][4])
{
  Matrix m(4, 4);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) m(i, j) = values[i][j];
  }
  return m;
}

void KoMatrix4Invert(benchmark::State& state)
{
  const KoMatrix m = MakeKo(kMatrix);
  for (auto _ : state) {
    int status = 0;
    KoMatrix inverse = m.Inverse(&status);
    benchmark::DoNotOptimize(inverse.Data());
    benchmark::DoNotOptimize(status);
  }
}
BENCHMARK(KoMatrix4Invert);

void Eigen4dInvert(benchmark::State& state)
{
  Eigen::Matrix4d m = MakeEigen<Eigen::Matrix4d>(kMatrix);
  for (auto _ : state) {
    benchmark::DoNotOptimize(m.data());
    Eigen::Matrix4d inverse = m.inverse();
    benchmark::DoNotOptimize(inverse.data());
  }
}
BENCHMARK(Eigen4dInvert);

// The same kind of work as KoMatrix: elimination with row pivoting, at fixed size. (Matrix4d::inverse()
// above is a closed cofactor formula without any singularity test.)
void Eigen4dPivotingInvert(benchmark::State& state)
{
  Eigen::Matrix4d m = MakeEigen<Eigen::Matrix4d>(kMatrix);
  for (auto _ : state) {
    benchmark::DoNotOptimize(m.data());
    Eigen::Matrix4d inverse = Eigen::PartialPivLU<Eigen::Matrix4d>(m).inverse();
    benchmark::DoNotOptimize(inverse.data());
  }
}
BENCHMARK(Eigen4dPivotingInvert);

void EigenXdInvert(benchmark::State& state)
{
  Eigen::MatrixXd m = MakeEigen<Eigen::MatrixXd>(kMatrix);
  for (auto _ : state) {
    Eigen::MatrixXd inverse = m.inverse();
    benchmark::DoNotOptimize(inverse.data());
  }
}
BENCHMARK(EigenXdInvert);

void KoMatrix4Product(benchmark::State& state)
{
  const KoMatrix a = MakeKo(kMatrix);
  const KoMatrix b = MakeKo(kOther);
  for (auto _ : state) {
    KoMatrix product = a * b;
    benchmark::DoNotOptimize(product.Data());
  }
}
BENCHMARK(KoMatrix4Product);

void Eigen4dProduct(benchmark::State& state)
{
  Eigen::Matrix4d a = MakeEigen<Eigen::Matrix4d>(kMatrix);
  Eigen::Matrix4d b = MakeEigen<Eigen::Matrix4d>(kOther);
  for (auto _ : state) {
    benchmark::DoNotOptimize(a.data());
    benchmark::DoNotOptimize(b.data());
    Eigen::Matrix4d product = a * b;
    benchmark::DoNotOptimize(product.data());
  }
}
BENCHMARK(Eigen4dProduct);

void EigenXdProduct(benchmark::State& state)
{
  const Eigen::MatrixXd a = MakeEigen<Eigen::MatrixXd>(kMatrix);
  const Eigen::MatrixXd b = MakeEigen<Eigen::MatrixXd>(kOther);
  for (auto _ : state) {
    Eigen::MatrixXd product = a * b;
    benchmark::DoNotOptimize(product.data());
  }
}
BENCHMARK(EigenXdProduct);

// Pairs as the drawing transformation produces them: survey coordinates, a similarity plus some noise.
struct Pairs {
  KoPointList actual, target;
  Eigen::Matrix3Xd actualMatrix, targetMatrix;
};

Pairs MakePairs(int count)
{
  std::mt19937 random(1);
  std::uniform_real_distribution<double> spread(-200.0, 200.0);
  std::normal_distribution<double> noise(0.0, 0.01);
  const Eigen::Matrix3d rotation = Eigen::AngleAxisd(0.7, Eigen::Vector3d(0.1, 0.2, 1.0).normalized()).toRotationMatrix();
  const Eigen::Vector3d origin(2461366.667847222, 5612345.25, 312.5);
  Pairs pairs;
  pairs.actualMatrix.resize(3, count);
  pairs.targetMatrix.resize(3, count);
  for (int i = 0; i < count; ++i) {
    const Eigen::Vector3d p = origin + Eigen::Vector3d(spread(random), spread(random), spread(random) / 10);
    const Eigen::Vector3d q = 1.001 * rotation * p + Eigen::Vector3d(100, -200, 5) +
                              Eigen::Vector3d(noise(random), noise(random), noise(random));
    pairs.actual.AppendCopy(KoPoint(static_cast<std::uint32_t>(i + 1), p.x(), p.y(), p.z(), 7));
    pairs.target.AppendCopy(KoPoint(static_cast<std::uint32_t>(i + 1), q.x(), q.y(), q.z(), 7));
    pairs.actualMatrix.col(i) = p;
    pairs.targetMatrix.col(i) = q;
  }
  return pairs;
}

void KoTrafo3dEstimate(benchmark::State& state)
{
  const Pairs pairs = MakePairs(static_cast<int>(state.range(0)));
  KoTrafo3d trafo;
  for (auto _ : state) {
    const bool ok = trafo.Estimate(pairs.target, pairs.actual, static_cast<int>(state.range(0)), false);
    benchmark::DoNotOptimize(ok);
    if (!ok) state.SkipWithError("estimate failed");
  }
}
BENCHMARK(KoTrafo3dEstimate)->Arg(3)->Arg(4);

// Eigen's SVD solution from ready point matrices (no list lookups): a generous baseline.
void EigenUmeyama(benchmark::State& state)
{
  const Pairs pairs = MakePairs(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Eigen::Matrix4d transform = Eigen::umeyama(pairs.actualMatrix, pairs.targetMatrix, true);
    benchmark::DoNotOptimize(transform.data());
  }
}
BENCHMARK(EigenUmeyama)->Arg(3)->Arg(4);

}  // namespace
