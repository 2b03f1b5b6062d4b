// Moving, turning and scaling entities of the DXF store in place, as a CAD host's transformBy does.
//
// The matrix is applied to the entity's own tags: world points directly, object-coordinate entities through
// their extrusion (arbitrary axis algorithm), angles, sizes, widths and thicknesses as the geometry demands.
// An entity is either transformed completely or left exactly as it was.
#pragma once

#include "host/dxf/Entity.h"

#include <string_view>

namespace dxf {

// Row-major 4x4 matrix acting on column vectors: p' = M * (x, y, z, 1), translation in column 3 (the layout
// of the host's AcGeMatrix3d).
struct Matrix44 {
  double m[4][4];
};

enum class TransformStatus {
  Ok,
  CannotScaleNonUniformly,  // the entity's shape cannot follow a matrix that is not a similarity
  NotSupported,             // an entity type that has no transformation here
  InvalidData,              // singular or non-finite matrix, or the entity's own numbers are unusable
  NotFinite,                // a number of the result would overflow to infinity (or be no number)
};

// Why an entity stayed where it was, as the surveyor reads it on the command line ("cannot scale
// non-uniformly"); empty for Ok.
std::string_view describe(TransformStatus status);

// Transforms the entity with its children (vertices, attributes). On any status but Ok nothing changed.
TransformStatus transformEntity(Entity& entity, const Matrix44& m);

}  // namespace dxf
