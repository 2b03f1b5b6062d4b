#include "geometry/KoPointVector.h"

#include "points/KoPoint.h"

KoVector::KoVector(const KoPoint& point, int mode) : m_data(nullptr), m_dimension(0)
{
  Allocate(mode == 0 || mode == 1 || mode == 2 ? 3 : 4);
  m_data[0] = point.x;
  m_data[1] = point.y;
  m_data[2] = mode == 0 ? 0.0 : mode == 1 ? 1.0 : point.z;
  // Mode 3 and the others leave the fourth element at the fresh 0.0.
}

KoVector KoPointCoordinates(const KoPoint& point)
{
  return KoVector(point, 2);
}

void KoSetPointCoordinates(KoPoint& point, const KoVector& coordinates)
{
  if (coordinates.GetDimension() < 3) KoThrowMatrixError(eKoVectorIndex);
  const double* c = coordinates.Data();
  point.x = c[0];
  point.y = c[1];
  point.z = c[2];
}
