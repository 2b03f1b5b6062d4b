// Vector arithmetic for transforming entities: the affine matrix, the object coordinate system of planar
// entities (arbitrary axis algorithm) and the mapping of an entity's plane onto its transformed plane.
#pragma once

#include <cmath>

namespace dxf::xform {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kDegToRad = kPi / 180.0;
inline constexpr double kRadToDeg = 180.0 / kPi;

struct Vec3 {
  double x = 0.0, y = 0.0, z = 0.0;

  Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
  Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
  Vec3 operator*(double f) const { return {x * f, y * f, z * f}; }
  Vec3 operator-() const { return {-x, -y, -z}; }
  double dot(const Vec3& o) const { return x * o.x + y * o.y + z * o.z; }
  Vec3 cross(const Vec3& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
  // Scaled, so that lengths above 1e154 (whose squares overflow) still come out finite.
  double length() const { return std::hypot(x, y, z); }
  double lengthSquared() const { return x * x + y * y + z * z; }
  // A zero vector stays zero rather than turning into NaNs.
  Vec3 normalized() const {
    const double l = length();
    return l > 0.0 ? Vec3{x / l, y / l, z / l} : Vec3{};
  }
  bool finite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
};

inline constexpr Vec3 kWorldZ{0.0, 0.0, 1.0};

inline Vec3 fromAngleDeg(double degrees) {
  const double r = degrees * kDegToRad;
  return {std::cos(r), std::sin(r), 0.0};
}

// The direction's angle in [0, 360) degrees, the range CAD hosts write.
inline double angleDeg(const Vec3& v) {
  const double a = std::atan2(v.y, v.x) * kRadToDeg;
  return a < 0.0 ? (a + 360.0 < 360.0 ? a + 360.0 : 0.0) : a;
}

inline double wrapDeg(double a) {
  a -= 360.0 * std::floor(a / 360.0);
  return a < 360.0 ? a : 0.0;
}

// p' = L * p + t: the 4x4 matrix without its (0, 0, 0, 1) bottom row.
struct Affine {
  double l[3][3];
  double t[3];

  Vec3 point(const Vec3& p) const {
    return {l[0][0] * p.x + l[0][1] * p.y + l[0][2] * p.z + t[0],
            l[1][0] * p.x + l[1][1] * p.y + l[1][2] * p.z + t[1],
            l[2][0] * p.x + l[2][1] * p.y + l[2][2] * p.z + t[2]};
  }
  Vec3 direction(const Vec3& d) const {
    return {l[0][0] * d.x + l[0][1] * d.y + l[0][2] * d.z, l[1][0] * d.x + l[1][1] * d.y + l[1][2] * d.z,
            l[2][0] * d.x + l[2][1] * d.y + l[2][2] * d.z};
  }
  // Normals follow the inverse transpose, so that they stay perpendicular to their plane even under a
  // matrix that shears; under a similarity that is the direction the matrix gives them.
  Vec3 normal(const Vec3& n) const {
    const Vec3 c0{l[0][0], l[1][0], l[2][0]}, c1{l[0][1], l[1][1], l[2][1]}, c2{l[0][2], l[1][2], l[2][2]};
    const Vec3 cof = c1.cross(c2) * n.x + c2.cross(c0) * n.y + c0.cross(c1) * n.z;
    return (c0.dot(c1.cross(c2)) < 0.0 ? -cof : cof).normalized();
  }
};

// What the matrix does to shapes, decided once per matrix.
struct MatrixKind {
  bool similarity = false;  // angles kept: rotation, reflection, uniform scale, shift
  double scale = 1.0;       // the uniform scale factor of a similarity
};

// The object coordinate system of a planar entity, derived from its extrusion direction by the arbitrary axis
// algorithm. Extrusions along world Z keep the identity, so plan entities are never rounded through a rotation.
class Ocs {
 public:
  Ocs() = default;
  explicit Ocs(const Vec3& extrusion) {
    const Vec3 az = extrusion.normalized();
    if (nearWorldZ(az)) return;
    identity_ = false;
    constexpr double kOneOver64 = 1.0 / 64.0;
    const Vec3 ax = (std::fabs(az.x) < kOneOver64 && std::fabs(az.y) < kOneOver64)
                        ? Vec3{0.0, 1.0, 0.0}.cross(az).normalized()
                        : Vec3{0.0, 0.0, 1.0}.cross(az).normalized();
    ux_ = ax;
    uy_ = az.cross(ax).normalized();
    uz_ = az;
  }

  static bool nearWorldZ(const Vec3& unit) {
    return std::fabs(unit.x) <= 1e-12 && std::fabs(unit.y) <= 1e-12 && std::fabs(unit.z - 1.0) <= 1e-12;
  }

  bool identity() const { return identity_; }
  const Vec3& ux() const { return ux_; }
  const Vec3& uy() const { return uy_; }
  const Vec3& uz() const { return uz_; }

  Vec3 toWcs(const Vec3& p) const { return identity_ ? p : ux_ * p.x + uy_ * p.y + uz_ * p.z; }
  Vec3 fromWcs(const Vec3& p) const { return identity_ ? p : Vec3{ux_.dot(p), uy_.dot(p), uz_.dot(p)}; }

 private:
  bool identity_ = true;
  Vec3 ux_{1.0, 0.0, 0.0}, uy_{0.0, 1.0, 0.0}, uz_{0.0, 0.0, 1.0};
};

// Carries values of a planar entity from its old object coordinate system into the one of its transformed
// plane. The new extrusion is the normal of the transformed x and y axes.
class OcsTransform {
 public:
  OcsTransform(const Affine& m, const Vec3& extrusion) : m_(m), old_(extrusion) {
    const Vec3 x = m.direction(old_.ux());
    const Vec3 y = m.direction(old_.uy());
    newExtrusion_ = x.cross(y).normalized();
    new_ = Ocs(newExtrusion_);
    if (new_.identity()) newExtrusion_ = {0.0, 0.0, 1.0};
  }
  // For block references, whose new extrusion is the transformed z axis itself.
  OcsTransform(const Affine& m, const Vec3& oldExtrusion, const Vec3& newExtrusion)
      : m_(m), old_(oldExtrusion), new_(newExtrusion), newExtrusion_(newExtrusion.normalized()) {
    if (new_.identity()) newExtrusion_ = {0.0, 0.0, 1.0};
  }

  const Ocs& oldOcs() const { return old_; }
  const Ocs& newOcs() const { return new_; }
  const Vec3& newExtrusion() const { return newExtrusion_; }
  const Affine& matrix() const { return m_; }

  Vec3 vertex(const Vec3& p) const { return new_.fromWcs(m_.point(old_.toWcs(p))); }
  Vec3 direction(const Vec3& d) const { return new_.fromWcs(m_.direction(old_.toWcs(d))); }
  double length(const Vec3& v) const { return m_.direction(old_.toWcs(v)).length(); }
  double angleDeg(double degrees) const { return xform::angleDeg(direction(fromAngleDeg(degrees))); }
  double angleRad(double radians) const {
    const Vec3 d = direction({std::cos(radians), std::sin(radians), 0.0});
    return std::atan2(d.y, d.x);
  }
  // Thickness runs along the extrusion; only its part along the new extrusion remains.
  double thickness(double t) const { return direction({0.0, 0.0, t}).z; }
  // Widths of polyline segments: the larger of the two in-plane stretches (equal under a similarity).
  double width(double w) const {
    const double a = std::fabs(w);
    if (a <= 1e-12) return 0.0;
    return std::fmax(length({a, 0.0, 0.0}), length({0.0, a, 0.0}));
  }

 private:
  const Affine& m_;
  Ocs old_;
  Ocs new_;
  Vec3 newExtrusion_;
};

}  // namespace dxf::xform
