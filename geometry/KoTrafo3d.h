#pragma once

#include "geometry/KoMatrix.h"
#include "geometry/KoTrafo3dData.h"
#include "geometry/KoVector.h"

#include <cstdint>
#include <map>

class KoPoint;
class KoPointList;

// Spatial similarity transformation (rotation, shift, optional uniform scale) estimated by least squares
// from pairs of identically numbered points: the actual points (where they are) and the target points
// (where they belong).
class KoTrafo3d {
public:
  KoTrafo3d();
  virtual ~KoTrafo3d();

  // Pairs the points numbered 1 ... pairCount of both lists and estimates the transformation that moves
  // the actual points onto the target points. With noScale the scale stays exactly 1.0. Fails (false,
  // parameters back to their initial state) for fewer than three pairs, a missing number, a coordinate
  // that is not finite, and for point sets that do not fix a rotation: coincident or collinear points.
  bool Estimate(const KoPointList& target, const KoPointList& actual, int pairCount, bool noScale);

  // The rotation with the scale applied (scale * R), so that T(b) * GetRotation() * T(-a) is the whole
  // transformation as one homogeneous matrix. The pure rotation is GetData().rotation.
  KoMatrix GetRotation() const;
  const KoVector& GetShiftA() const { return m_data.a; }
  const KoVector& GetShiftB() const { return m_data.b; }
  double GetScale() const { return m_data.scale; }
  const KoTrafo3dData& GetData() const { return m_data; }
  int GetPairCount() const { return m_pairCount; }
  // 1 after a successful estimate, 0 otherwise.
  int GetStatus() const { return m_status; }

  // Root mean square of the residuals (target minus transformed actual point) of each axis.
  double GetMeanErrorX() const { return m_meanError[0]; }
  double GetMeanErrorY() const { return m_meanError[1]; }
  double GetMeanErrorZ() const { return m_meanError[2]; }

  // b + scale * R * (p - a) for a 3-vector.
  KoVector Apply(const KoVector& p) const;

  // Orthonormal frame of three points, as the columns of `frame` (3x3): e1 along p1 - p0, e2 towards p2
  // in the plane of the three points and orthogonal to e1, e3 = e1 x e2. False (frame unchanged) when the
  // points are coincident or collinear.
  static bool Frame(const KoVector& p0, const KoVector& p1, const KoVector& p2, KoMatrix& frame);
  // distance / |a - b|; 1e-10 when a and b (practically) coincide, so that callers never divide by zero.
  static double ScaleRatio(double distance, const KoVector& a, const KoVector& b);

private:
  void Reset();
  bool CollectPairs(const KoPointList& list, int pairCount, double* coordinates);

  KoTrafo3dData m_data;
  int m_pairCount;
  int m_status;
  double m_meanError[3];
  std::map<std::uint32_t, const KoPoint*> m_numberMap;  // the list being paired, by point number
};
