// Where an entity's coordinates land in the drawing: the object coordinate system of planar entities (the
// arbitrary axis rule of the DXF format) and the chain of block insertions above an entity.
#pragma once

#include <cmath>

namespace host::gui {

struct Vec3 {
  double x = 0.0, y = 0.0, z = 0.0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(Vec3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline Vec3 cross(Vec3 a, Vec3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
inline double length(Vec3 a) { return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z); }
inline Vec3 normalised(Vec3 a, Vec3 fallback) {
  const double l = length(a);
  return l > 1e-300 && std::isfinite(l) ? a * (1.0 / l) : fallback;
}

// An affine map: columns x, y, z and the translation.
struct Affine {
  Vec3 x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}, t{0, 0, 0};

  Vec3 apply(Vec3 p) const { return x * p.x + y * p.y + z * p.z + t; }
  Vec3 applyVector(Vec3 v) const { return x * v.x + y * v.y + z * v.z; }
  Affine then(const Affine& outer) const {
    return {outer.applyVector(x), outer.applyVector(y), outer.applyVector(z), outer.apply(t)};
  }
};

// The object coordinate system of extrusion direction `normal`.
inline Affine objectSystem(Vec3 normal) {
  const Vec3 n = normalised(normal, Vec3{0, 0, 1});
  if (n.x == 0.0 && n.y == 0.0 && n.z == 1.0) return Affine{};
  const double limit = 1.0 / 64.0;
  const Vec3 ax = normalised(std::fabs(n.x) < limit && std::fabs(n.y) < limit ? cross(Vec3{0, 1, 0}, n)
                                                                                : cross(Vec3{0, 0, 1}, n),
                             Vec3{1, 0, 0});
  const Vec3 ay = normalised(cross(n, ax), Vec3{0, 1, 0});
  return Affine{ax, ay, n, {}};
}

}  // namespace host::gui
