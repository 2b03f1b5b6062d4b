#include "geometry/KoVector.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

KoVector::KoVector(int dimension) : m_data(nullptr), m_dimension(0)
{
  Allocate(dimension);
}

KoVector::KoVector(const KoVector& other) : m_data(nullptr), m_dimension(0)
{
  Allocate(other.m_dimension);
  std::copy_n(other.m_data, m_dimension, m_data);
}

KoVector::KoVector(KoVector&& other) noexcept : m_data(m_local), m_dimension(other.m_dimension)
{
  if (other.m_data != other.m_local) {
    m_data = std::exchange(other.m_data, other.m_local);
  } else {
    std::copy_n(other.m_local, m_dimension, m_local);
  }
  other.m_dimension = 0;
}

KoVector::~KoVector()
{
  Release();
}

void KoVector::Allocate(int dimension)
{
  m_dimension = std::max(dimension, 0);
  m_data = m_dimension <= kLocalSize ? m_local : new double[static_cast<size_t>(m_dimension)];
  std::fill_n(m_data, m_dimension, 0.0);
}

void KoVector::Release()
{
  if (m_data != m_local) delete[] m_data;
  m_data = m_local;
  m_dimension = 0;
}

KoVector& KoVector::operator=(const KoVector& other)
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorAssignDimension);
  if (this != &other) std::copy_n(other.m_data, m_dimension, m_data);
  return *this;
}

void KoVector::Resize(int dimension)
{
  Release();
  Allocate(dimension);
}

void KoVector::SetMode(int mode)
{
  if (m_dimension == 3 && mode != 0 && mode != 1 && mode != 2) {
    const double x = m_data[0], y = m_data[1], z = m_data[2];
    Resize(4);
    m_data[0] = x;
    m_data[1] = y;
    m_data[2] = z;
    m_data[3] = mode == 3 ? 1.0 : 0.0;
  } else if (m_dimension == 4 && mode != 3) {
    const double x = m_data[0], y = m_data[1], z = m_data[2];
    Resize(3);
    m_data[0] = x;
    m_data[1] = y;
    m_data[2] = mode == 0 ? 0.0 : mode == 1 ? 1.0 : z;
  }
}

void KoVector::Clear()
{
  std::fill_n(m_data, m_dimension, 0.0);
}

bool KoVector::operator==(const KoVector& other) const
{
  return m_dimension == other.m_dimension && std::equal(m_data, m_data + m_dimension, other.m_data);
}

KoVector& KoVector::operator+=(const KoVector& other)
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorAddDimension);
  for (int i = 0; i < m_dimension; ++i) m_data[i] += other.m_data[i];
  return *this;
}

KoVector& KoVector::operator-=(const KoVector& other)
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorAddDimension);
  for (int i = 0; i < m_dimension; ++i) m_data[i] -= other.m_data[i];
  return *this;
}

KoVector& KoVector::operator*=(double factor)
{
  for (int i = 0; i < m_dimension; ++i) m_data[i] *= factor;
  return *this;
}

KoVector KoVector::operator+(const KoVector& other) const
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorAddDimension);
  KoVector sum(m_dimension);
  for (int i = 0; i < m_dimension; ++i) sum.m_data[i] = m_data[i] + other.m_data[i];
  return sum;
}

KoVector KoVector::operator-(const KoVector& other) const
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorAddDimension);
  KoVector difference(m_dimension);
  for (int i = 0; i < m_dimension; ++i) difference.m_data[i] = m_data[i] - other.m_data[i];
  return difference;
}

KoVector KoVector::operator*(double factor) const
{
  KoVector product(m_dimension);
  for (int i = 0; i < m_dimension; ++i) product.m_data[i] = m_data[i] * factor;
  return product;
}

KoVector operator*(double factor, const KoVector& vector)
{
  return vector * factor;
}

double KoVector::operator*(const KoVector& other) const
{
  if (m_dimension != other.m_dimension) KoThrowMatrixError(eKoVectorDotDimension);
  double sum = 0.0;
  for (int i = 0; i < m_dimension; ++i) sum += m_data[i] * other.m_data[i];
  return sum;
}

KoVector KoVector::operator%(const KoVector& other) const
{
  if (m_dimension != 3 || other.m_dimension != 3) KoThrowMatrixError(eKoVectorCrossNot3D);
  const double* a = m_data;
  const double* b = other.m_data;
  KoVector cross(3);
  cross.m_data[0] = a[1] * b[2] - a[2] * b[1];
  cross.m_data[1] = a[2] * b[0] - a[0] * b[2];
  cross.m_data[2] = a[0] * b[1] - a[1] * b[0];
  return cross;
}

double KoVector::Length() const
{
  double sum = 0.0;
  for (int i = 0; i < m_dimension; ++i) sum += m_data[i] * m_data[i];
  return std::sqrt(sum);
}

void KoVector::Normalize()
{
  *this *= 1.0 / Length();
}

bool KoVector::IsUnit(double tolerance) const
{
  const double length = Length();
  return 1.0 - tolerance <= length && length <= 1.0 + tolerance;
}

double KoVector::Angle(const KoVector& other) const
{
  KoVector a(*this);
  KoVector b(other);
  a.Normalize();
  b.Normalize();
  // Rounding can push the cosine of (anti)parallel directions just past +-1, where acos has no value.
  return std::acos(std::clamp(a * b, -1.0, 1.0));
}

void KoVector::ToString(std::string& text) const
{
  text.clear();
  // Wide enough for the largest double in fixed notation.
  char buffer[400];
  for (int i = 0; i < m_dimension; ++i) {
    std::snprintf(buffer, sizeof buffer, "%.5f   ", m_data[i]);
    text += buffer;
  }
}
