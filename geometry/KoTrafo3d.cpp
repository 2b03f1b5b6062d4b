#include "geometry/KoTrafo3d.h"

#include "geometry/KoTrafo3dRotation.h"
#include "points/KoPoint.h"
#include "points/KoPointList.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double kDegenerate = 1e-10;

// Whether reduced points (centroid at the origin) leave a rotation undetermined: they coincide, or they lie
// on one line. Both tests measure in length units against the size of the coordinates themselves: survey
// coordinates of some 10^6 m carry rounding of about 1e-10 m, which must not pass for a spread or a width.
bool Degenerate(const double* reduced, int count, double sumOfSquares, double largestCoordinate)
{
  const double tolerance = kDegenerate * std::max(1.0, largestCoordinate);
  // Root mean square distance from the centroid.
  if (std::sqrt(sumOfSquares / count) <= tolerance) return true;
  // The sum of |p_i x p_j|^2 over all pairs is the sum of the products of pairs of principal moments;
  // divided by the sum of all moments it is, within a factor of three, the second moment: the mean square
  // distance from the best-fitting line.
  double crossSum = 0.0;
  for (int i = 0; i < count; ++i) {
    const double* p = reduced + 3 * i;
    for (int j = i + 1; j < count; ++j) {
      const double* q = reduced + 3 * j;
      const double cx = p[1] * q[2] - p[2] * q[1];
      const double cy = p[2] * q[0] - p[0] * q[2];
      const double cz = p[0] * q[1] - p[1] * q[0];
      crossSum += cx * cx + cy * cy + cz * cz;
    }
  }
  return std::sqrt(crossSum / (sumOfSquares * count)) <= tolerance;
}

}  // namespace

KoTrafo3d::KoTrafo3d() : m_pairCount(0), m_status(0), m_meanError{0.0, 0.0, 0.0} {}

KoTrafo3d::~KoTrafo3d() = default;

void KoTrafo3d::Reset()
{
  m_data.rotation.Clear();
  m_data.a.Clear();
  m_data.b.Clear();
  m_data.scale = 1.0;
  m_status = 0;
  std::fill_n(m_meanError, 3, 0.0);
}

// Writes x, y, z of the points numbered 1 ... pairCount into coordinates[3 * (number - 1) ...].
bool KoTrafo3d::CollectPairs(const KoPointList& list, int pairCount, double* coordinates)
{
  m_numberMap.clear();
  for (const KoPoint* point = list.First(); point; point = KoPointList::Next(point)) {
    m_numberMap.emplace(point->number, point);  // the first point of a number wins
  }
  for (int number = 1; number <= pairCount; ++number) {
    const auto found = m_numberMap.find(static_cast<std::uint32_t>(number));
    if (found == m_numberMap.end()) return false;
    const KoPoint& point = *found->second;
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) return false;
    double* c = coordinates + 3 * (number - 1);
    c[0] = point.x;
    c[1] = point.y;
    c[2] = point.z;
  }
  m_numberMap.clear();
  return true;
}

bool KoTrafo3d::Estimate(const KoPointList& target, const KoPointList& actual, int pairCount, bool noScale)
{
  Reset();
  m_pairCount = pairCount;
  if (pairCount < 3) return false;
  const int n = pairCount;
  std::vector<double> p(3 * static_cast<size_t>(n));  // actual points, later reduced to their centroid
  std::vector<double> q(3 * static_cast<size_t>(n));  // target points, likewise
  if (!CollectPairs(actual, n, p.data()) || !CollectPairs(target, n, q.data())) return false;

  double centroidP[3] = {0, 0, 0}, centroidQ[3] = {0, 0, 0};
  double largestP = 0.0, largestQ = 0.0;
  for (int i = 0; i < n; ++i) {
    for (int k = 0; k < 3; ++k) {
      centroidP[k] += p[3 * i + k];
      centroidQ[k] += q[3 * i + k];
      largestP = std::max(largestP, std::fabs(p[3 * i + k]));
      largestQ = std::max(largestQ, std::fabs(q[3 * i + k]));
    }
  }
  for (int k = 0; k < 3; ++k) {
    centroidP[k] /= n;
    centroidQ[k] /= n;
  }

  double correlation[9] = {0, 0, 0, 0, 0, 0, 0, 0, 0};
  double sumP = 0.0, sumQ = 0.0;
  for (int i = 0; i < n; ++i) {
    double* pi = &p[3 * i];
    double* qi = &q[3 * i];
    for (int k = 0; k < 3; ++k) {
      pi[k] -= centroidP[k];
      qi[k] -= centroidQ[k];
      sumP += pi[k] * pi[k];
      sumQ += qi[k] * qi[k];
    }
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 3; ++c) correlation[3 * r + c] += pi[r] * qi[c];
    }
  }
  if (Degenerate(p.data(), n, sumP, largestP) || Degenerate(q.data(), n, sumQ, largestQ)) return false;
  double correlationNorm = 0.0;
  for (double value : correlation) correlationNorm += value * value;
  if (std::sqrt(correlationNorm) <= kDegenerate * std::sqrt(sumP * sumQ)) return false;

  double rotation[9];
  if (!KoBestRotation(correlation, rotation)) return false;

  double scale = 1.0;
  if (!noScale) {
    // Least-squares scale for the best rotation: sum q . (R p) / sum |p|^2.
    double aligned = 0.0;
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 3; ++c) aligned += rotation[3 * r + c] * correlation[3 * c + r];
    }
    scale = aligned / sumP;
    if (!(scale > kDegenerate) || !std::isfinite(scale)) return false;
  }

  double squares[3] = {0, 0, 0};
  for (int i = 0; i < n; ++i) {
    const double* pi = &p[3 * i];
    const double* qi = &q[3 * i];
    for (int r = 0; r < 3; ++r) {
      const double moved = scale * (rotation[3 * r] * pi[0] + rotation[3 * r + 1] * pi[1] + rotation[3 * r + 2] * pi[2]);
      squares[r] += (qi[r] - moved) * (qi[r] - moved);
    }
  }

  std::copy_n(rotation, 9, m_data.rotation.Data());
  std::copy_n(centroidP, 3, m_data.a.Data());
  std::copy_n(centroidQ, 3, m_data.b.Data());
  m_data.scale = scale;
  for (int k = 0; k < 3; ++k) m_meanError[k] = std::sqrt(squares[k] / n);
  m_status = 1;
  return true;
}

KoMatrix KoTrafo3d::GetRotation() const
{
  return m_data.rotation * m_data.scale;
}

KoVector KoTrafo3d::Apply(const KoVector& p) const
{
  return m_data.b + m_data.rotation * (p - m_data.a) * m_data.scale;
}

bool KoTrafo3d::Frame(const KoVector& p0, const KoVector& p1, const KoVector& p2, KoMatrix& frame)
{
  KoVector e1 = p1 - p0;
  KoVector e2 = p2 - p0;
  const double length1 = e1.Length();
  if (!(length1 >= kDegenerate)) return false;
  e1 *= 1.0 / length1;
  e2 -= e1 * (e1 * e2);
  const double length2 = e2.Length();
  if (!(length2 >= kDegenerate * std::max(1.0, (p2 - p0).Length()))) return false;
  e2 *= 1.0 / length2;
  KoVector e3 = e1 % e2;
  e3.Normalize();
  frame.SetColumn(1, e1);
  frame.SetColumn(2, e2);
  frame.SetColumn(3, e3);
  return true;
}

double KoTrafo3d::ScaleRatio(double distance, const KoVector& a, const KoVector& b)
{
  const double between = (a - b).Length();
  return between < kDegenerate ? kDegenerate : distance / between;
}
