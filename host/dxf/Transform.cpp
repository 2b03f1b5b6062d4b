#include "host/dxf/Transform.h"

#include "host/dxf/TransformTypes.h"

#include <cmath>
#include <string_view>

namespace dxf {

namespace {

using namespace xform;

using TypeTransform = TransformStatus (*)(Entity&, const Context&);

TypeTransform transformFor(std::string_view type) {
  struct Entry {
    std::string_view type;
    TypeTransform fn;
  };
  static constexpr Entry kTable[] = {
      {"LINE", transformLine},           {"LWPOLYLINE", transformLwPolyline}, {"POINT", transformPoint},
      {"TEXT", transformText},           {"CIRCLE", transformCircle},         {"ARC", transformArc},
      {"INSERT", transformInsert},       {"POLYLINE", transformPolyline},     {"MTEXT", transformMText},
      {"3DFACE", transformFace},         {"SOLID", transformSolid},           {"TRACE", transformSolid},
      {"HATCH", transformHatch},         {"DIMENSION", transformDimension},   {"ELLIPSE", transformEllipse},
      {"SPLINE", transformSpline},       {"LEADER", transformLeader},         {"RAY", transformRay},
      {"XLINE", transformRay},           {"ATTDEF", transformText},           {"ATTRIB", transformText},
      {"3DLINE", transformLine},  // R10 and older: a line in space
      {"IMAGE", transformImage},         {"WIPEOUT", transformImage},         {"PDFUNDERLAY", transformUnderlay},
      {"DWFUNDERLAY", transformUnderlay}, {"DGNUNDERLAY", transformUnderlay}, {"MLINE", transformMLine},
      {"ARC_DIMENSION", transformArcDimension}, {"LARGE_RADIAL_DIMENSION", transformLargeRadialDimension},
      {"TOLERANCE", transformTolerance}, {"SHAPE", transformShape},           {"LIGHT", transformLight},
      {"OLE2FRAME", transformOleFrame},  {"MESH", transformMesh},             {"HELIX", transformHelix},
      {"MULTILEADER", transformMultiLeader}, {"3DSOLID", transformAcis},   {"REGION", transformAcis},
      {"BODY", transformAcis},           {"PLANESURFACE", transformAcis},     {"ACAD_TABLE", transformTable},
  };
  for (const Entry& e : kTable)
    if (e.type == type) return e.fn;
  return nullptr;
}

// Projective matrices, singular ones and NaNs have no meaning for a drawing.
bool usable(const Matrix44& m, Affine& a, MatrixKind& kind) {
  for (const auto& row : m.m)
    for (double v : row)
      if (!std::isfinite(v)) return false;
  if (std::fabs(m.m[3][0]) > 1e-12 || std::fabs(m.m[3][1]) > 1e-12 || std::fabs(m.m[3][2]) > 1e-12 ||
      std::fabs(m.m[3][3] - 1.0) > 1e-12)
    return false;
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) a.l[r][c] = m.m[r][c];
    a.t[r] = m.m[r][3];
  }
  const Vec3 c0{a.l[0][0], a.l[1][0], a.l[2][0]}, c1{a.l[0][1], a.l[1][1], a.l[2][1]},
      c2{a.l[0][2], a.l[1][2], a.l[2][2]};
  const double n0 = c0.length(), n1 = c1.length(), n2 = c2.length();
  const double det = c0.dot(c1.cross(c2));
  if (!(std::fabs(det) > 1e-12 * n0 * n1 * n2)) return false;

  // A similarity keeps the columns perpendicular and of one length.
  const double s2 = (n0 * n0 + n1 * n1 + n2 * n2) / 3.0;
  constexpr double kTol = 1e-9;
  kind.similarity = std::fabs(n0 * n0 - s2) <= kTol * s2 && std::fabs(n1 * n1 - s2) <= kTol * s2 &&
                    std::fabs(n2 * n2 - s2) <= kTol * s2 && std::fabs(c0.dot(c1)) <= kTol * s2 &&
                    std::fabs(c0.dot(c2)) <= kTol * s2 && std::fabs(c1.dot(c2)) <= kTol * s2;
  kind.scale = std::sqrt(s2);
  return true;
}

}  // namespace

TransformStatus transformEntity(Entity& entity, const Matrix44& m) {
  const TypeTransform fn = transformFor(entity.type);
  if (fn == nullptr) return TransformStatus::NotSupported;
  Affine a{};
  MatrixKind kind;
  if (!usable(m, a, kind)) return TransformStatus::InvalidData;

  // One scratch list per thread: transforming a drawing plans thousands of entities without allocating.
  thread_local Edits edits;
  edits.clear();
  const Context c{a, kind, edits};
  TransformStatus status = fn(entity, c);
  if (status == TransformStatus::Ok) {
    bool xdataOk = planXdata(entity.tags, a, kind, edits);
    for (Entity& child : entity.children) xdataOk = xdataOk && planXdata(child.tags, a, kind, edits);
    if (!xdataOk) status = TransformStatus::InvalidData;
  }
  // Every number written must read back: a result that overflowed leaves the entity as it was.
  if (status == TransformStatus::Ok && !edits.finite()) status = TransformStatus::NotFinite;
  if (status == TransformStatus::Ok)
    edits.apply();
  else
    edits.clear();
  return status;
}

std::string_view describe(TransformStatus status) {
  switch (status) {
    case TransformStatus::Ok: return {};
    case TransformStatus::CannotScaleNonUniformly: return "cannot scale non-uniformly";
    case TransformStatus::NotSupported: return "cannot be transformed";
    case TransformStatus::InvalidData: return "numbers missing or unreadable";
    case TransformStatus::NotFinite: return "result not finite";
  }
  return "cannot be transformed";
}

}  // namespace dxf
