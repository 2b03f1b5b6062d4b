// Matrices for the transformation tests, in the host's layout (row-major, column vectors).
#pragma once

#include "host/dxf/Transform.h"

#include <cmath>

namespace dxf::testing {

inline Matrix44 identity() {
  Matrix44 m{};
  for (int i = 0; i < 4; ++i) m.m[i][i] = 1.0;
  return m;
}

inline Matrix44 operator*(const Matrix44& a, const Matrix44& b) {
  Matrix44 r{};
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      for (int k = 0; k < 4; ++k) r.m[i][j] += a.m[i][k] * b.m[k][j];
  return r;
}

inline Matrix44 shift(double x, double y, double z) {
  Matrix44 m = identity();
  m.m[0][3] = x;
  m.m[1][3] = y;
  m.m[2][3] = z;
  return m;
}

inline Matrix44 scaling(double sx, double sy, double sz) {
  Matrix44 m = identity();
  m.m[0][0] = sx;
  m.m[1][1] = sy;
  m.m[2][2] = sz;
  return m;
}

// Rotation by `degrees` about the axis (x, y, z) through the origin (Rodrigues).
inline Matrix44 rotation(double x, double y, double z, double degrees) {
  const double n = std::sqrt(x * x + y * y + z * z);
  x /= n;
  y /= n;
  z /= n;
  const double a = degrees * 3.14159265358979323846 / 180.0, c = std::cos(a), s = std::sin(a), t = 1.0 - c;
  Matrix44 m = identity();
  m.m[0][0] = t * x * x + c;
  m.m[0][1] = t * x * y - s * z;
  m.m[0][2] = t * x * z + s * y;
  m.m[1][0] = t * x * y + s * z;
  m.m[1][1] = t * y * y + c;
  m.m[1][2] = t * y * z - s * x;
  m.m[2][0] = t * x * z - s * y;
  m.m[2][1] = t * y * z + s * x;
  m.m[2][2] = t * z * z + c;
  return m;
}

}  // namespace dxf::testing
