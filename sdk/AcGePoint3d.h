// Points and vectors of the host's geometry library: small value types.
#pragma once

#include <cmath>

class AcGeVector3d {
 public:
  double x = 0.0, y = 0.0, z = 0.0;

  constexpr AcGeVector3d() = default;
  constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  double length() const { return std::sqrt(x * x + y * y + z * z); }
  constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  constexpr bool operator==(const AcGeVector3d&) const = default;
};

class AcGePoint3d {
 public:
  double x = 0.0, y = 0.0, z = 0.0;

  constexpr AcGePoint3d() = default;
  constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
  constexpr bool operator==(const AcGePoint3d&) const = default;

  static const AcGePoint3d kOrigin;
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{0.0, 0.0, 0.0};
