#include "geometry/KoTrafo3dRotation.h"

#include <algorithm>
#include <cmath>

// The rotation comes from Horn's unit quaternion: it is the eigenvector of the largest eigenvalue of a
// symmetric 4x4 matrix N built from the correlation. Unlike a polar decomposition or an axis-angle
// reading of the trace, this never yields a reflection, stays exact near 180 degrees, and copes with the
// rank-2 correlation of coplanar points (three pairs are always coplanar).
//
// With the correlation scaled to unit Frobenius norm, let p = 1 be the sum of the squared singular values,
// q the sum of their pairwise squared products and r the determinant. The largest eigenvalue x of N is the
// sum of the singular values with the smallest one signed by the determinant; it satisfies
// x = sqrt(p + 2 sqrt(q + 2 r x)), which a fixed-point iteration from x = 1 solves (the map contracts by at
// least 2/9 when r >= 0). All eigenvalues of N are roots of x^4 - 2p x^2 - 8r x + p^2 - 4q.

namespace {

constexpr double kDegenerate = 1e-10;
constexpr double kConverged = 1e-10;
constexpr int kMaxRounds = 200;

double Det3(const double* m)
{
  return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
         m[2] * (m[3] * m[7] - m[4] * m[6]);
}

double Quartic(double x, double p, double q, double r)
{
  const double x2 = x * x;
  return x2 * x2 - 2.0 * p * x2 - 8.0 * r * x + (p * p - 4.0 * q);
}

double QuarticSlope(double x, double p, double r)
{
  return 4.0 * x * x * x - 4.0 * p * x - 8.0 * r;
}

// The square-root branch of the iteration cannot reach the largest root when the actual points are close
// to a mirror image of the target points (negative determinant with a negative pairwise sum). Newton's
// method started above every root of a real-rooted polynomial descends monotonically to the largest one.
double NewtonLargestRoot(double p, double q, double r)
{
  double x = std::sqrt(3.0 * p) * (1.0 + 1e-12);  // sum of the singular values, an upper bound
  for (int rounds = 0; rounds < kMaxRounds; ++rounds) {
    const double slope = QuarticSlope(x, p, r);
    if (!(slope > 0.0)) break;
    const double step = Quartic(x, p, q, r) / slope;
    x -= step;
    if (!(std::fabs(step) > 1e-15)) break;
  }
  return x;
}

double Minor3(const double a[4][4], int skipRow, int skipColumn)
{
  double m[9];
  int k = 0;
  for (int i = 0; i < 4; ++i) {
    if (i == skipRow) continue;
    for (int j = 0; j < 4; ++j) {
      if (j != skipColumn) m[k++] = a[i][j];
    }
  }
  return Det3(m);
}

}  // namespace

double KoLargestRootIteration(double p, double q, double r, int& rounds, bool& converged)
{
  auto round = [p, q, r](double x) {
    // A negative radicand only arises while far from the root of a reflected point set.
    return std::sqrt(p + 2.0 * std::sqrt(std::max(0.0, q + 2.0 * r * x)));
  };
  double x = round(1.0);
  rounds = 1;
  converged = std::fabs(x - 1.0) <= kConverged;
  for (; !converged && rounds < kMaxRounds; ++rounds) {
    const double next = round(x);
    converged = std::fabs(next - x) <= kConverged;
    x = next;
  }
  return x;
}

bool KoBestRotation(const double correlation[9], double rotation[9])
{
  double norm = 0.0;
  for (int k = 0; k < 9; ++k) norm += correlation[k] * correlation[k];
  norm = std::sqrt(norm);
  if (!(norm > 0.0) || !std::isfinite(norm)) return false;
  double m[9];
  for (int k = 0; k < 9; ++k) m[k] = correlation[k] / norm;

  // Sum of the squared 2x2 minors: the pairwise products of the squared singular values, without the
  // cancellation of the trace formula.
  double p = 0.0;
  for (int k = 0; k < 9; ++k) p += m[k] * m[k];
  double q = 0.0;
  for (int i1 = 0; i1 < 3; ++i1) {
    for (int i2 = i1 + 1; i2 < 3; ++i2) {
      for (int j1 = 0; j1 < 3; ++j1) {
        for (int j2 = j1 + 1; j2 < 3; ++j2) {
          const double minor = m[3 * i1 + j1] * m[3 * i2 + j2] - m[3 * i1 + j2] * m[3 * i2 + j1];
          q += minor * minor;
        }
      }
    }
  }
  const double r = Det3(m);

  int rounds = 0;
  bool converged = false;
  double x = KoLargestRootIteration(p, q, r, rounds, converged);
  if (!converged || std::fabs(Quartic(x, p, q, r)) > 1e-8 || QuarticSlope(x, p, r) < -1e-8) {
    x = NewtonLargestRoot(p, q, r);
  }

  const double sxx = m[0], sxy = m[1], sxz = m[2];
  const double syx = m[3], syy = m[4], syz = m[5];
  const double szx = m[6], szy = m[7], szz = m[8];
  const double a[4][4] = {
      {sxx + syy + szz - x, syz - szy, szx - sxz, sxy - syx},
      {syz - szy, sxx - syy - szz - x, sxy + syx, szx + sxz},
      {szx - sxz, sxy + syx, -sxx + syy - szz - x, syz + szy},
      {sxy - syx, szx + sxz, syz + szy, -sxx - syy + szz - x},
  };

  // N - xI has rank 3 for a simple eigenvalue x, so every column of its adjugate is a multiple of the
  // eigenvector; the longest column is the most accurate. All columns vanish when the largest eigenvalue
  // is multiple, that is when the points leave a rotation free (collinear points).
  double best[4] = {0, 0, 0, 0};
  double bestLength = 0.0;
  for (int j = 0; j < 4; ++j) {
    double column[4];
    double length = 0.0;
    for (int i = 0; i < 4; ++i) {
      column[i] = ((i + j) % 2 ? -1.0 : 1.0) * Minor3(a, j, i);
      length += column[i] * column[i];
    }
    if (length > bestLength) {
      bestLength = length;
      std::copy_n(column, 4, best);
    }
  }
  bestLength = std::sqrt(bestLength);
  if (!(bestLength > kDegenerate) || !std::isfinite(bestLength)) return false;

  const double q0 = best[0] / bestLength, qx = best[1] / bestLength;
  const double qy = best[2] / bestLength, qz = best[3] / bestLength;
  rotation[0] = q0 * q0 + qx * qx - qy * qy - qz * qz;
  rotation[1] = 2.0 * (qx * qy - q0 * qz);
  rotation[2] = 2.0 * (qx * qz + q0 * qy);
  rotation[3] = 2.0 * (qy * qx + q0 * qz);
  rotation[4] = q0 * q0 - qx * qx + qy * qy - qz * qz;
  rotation[5] = 2.0 * (qy * qz - q0 * qx);
  rotation[6] = 2.0 * (qz * qx - q0 * qy);
  rotation[7] = 2.0 * (qz * qy + q0 * qx);
  rotation[8] = q0 * q0 - qx * qx - qy * qy + qz * qz;
  return true;
}
