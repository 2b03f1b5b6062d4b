#pragma once

#include "geometry/eKoMatrixErrorCode.h"

#include <string>

class KoPoint;

// A dense vector of doubles with one-based element access. Every index and dimension fault throws an
// `eKoMatrixErrorCode`. Copies are deep. Vectors of up to four elements (points, homogeneous points) keep
// their elements inside the object, so the everyday 3D work never touches the heap.
class KoVector {
public:
  explicit KoVector(int dimension = 3);
  // From a point and a point mode:
  //   0: (x, y, 0)  1: (x, y, 1)  2: (x, y, z)  3: (x, y, z, 0)  other: (x, y, z, 0)
  KoVector(const KoPoint& point, int mode);
  KoVector(const KoVector& other);
  KoVector(KoVector&& other) noexcept;  // the moved-from vector is left with dimension 0
  virtual ~KoVector();

  // Assignment requires equal dimensions (code 3); use Resize first to change the dimension.
  KoVector& operator=(const KoVector& other);

  int GetDimension() const { return m_dimension; }
  // Replaces the elements by `dimension` zeros (a negative dimension counts as 0).
  void Resize(int dimension);
  // Switches between the point modes above. A 3-vector taking mode 3 becomes (x, y, z, 1) (unlike the
  // construction from a point, which gives 0: a vector switched to mode 3 is meant to be multiplied by a
  // homogeneous 4x4 matrix); a 4-vector taking mode 0, 1 or 2 drops its fourth element and then gets
  // z = 0, z = 1 or keeps z. A 3-vector taking mode 0 or 1 keeps its z.
  void SetMode(int mode);

  double GetElem(int i) const
  {
    if (i < 1 || i > m_dimension) KoThrowMatrixError(eKoVectorGetElemIndex);
    return m_data[i - 1];
  }
  void SetElem(int i, double value)
  {
    if (i < 1 || i > m_dimension) KoThrowMatrixError(eKoVectorSetElemIndex);
    m_data[i - 1] = value;
  }
  double& operator[](int i)
  {
    if (i < 1 || i > m_dimension) KoThrowMatrixError(eKoVectorIndex);
    return m_data[i - 1];
  }
  const double& operator[](int i) const
  {
    if (i < 1 || i > m_dimension) KoThrowMatrixError(eKoVectorIndex);
    return m_data[i - 1];
  }

  void Clear();

  // Exact element-wise equality, no tolerance; vectors of different dimension are unequal.
  bool operator==(const KoVector& other) const;

  KoVector& operator+=(const KoVector& other);  // code 5
  KoVector& operator-=(const KoVector& other);  // code 5 as well
  KoVector& operator*=(double factor);
  KoVector operator+(const KoVector& other) const;  // code 5
  KoVector operator-(const KoVector& other) const;  // code 5 as well
  KoVector operator*(double factor) const;
  double operator*(const KoVector& other) const;    // scalar product, code 8
  KoVector operator%(const KoVector& other) const;  // cross product of 3-vectors, code 4

  double Length() const;
  // Divides by the length; a zero vector becomes NaN (callers test the length first where it matters).
  void Normalize();
  bool IsUnit(double tolerance) const;
  // Angle in radians between the directions of the two vectors.
  double Angle(const KoVector& other) const;

  // Every element as "%.5f   ", in order; `text` is cleared first.
  void ToString(std::string& text) const;

  const double* Data() const { return m_data; }
  double* Data() { return m_data; }

private:
  static constexpr int kLocalSize = 4;

  void Allocate(int dimension);
  void Release();

  double* m_data;
  int m_dimension;
  double m_local[kLocalSize];
};

KoVector operator*(double factor, const KoVector& vector);
