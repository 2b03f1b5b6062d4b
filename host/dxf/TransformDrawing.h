// Transformations that reach beyond one entity. A dimension is drawn through an anonymous block of its own
// ("*D12"); a CAD program moves that drawing with the dimension, or every viewer shows the dimension where
// it was.
#pragma once

#include "host/dxf/Document.h"
#include "host/dxf/Transform.h"

namespace dxf {

// Transforms the entity as transformEntity does; a dimension takes the entities of its block along. On any
// status but Ok neither the entity nor the block changed.
TransformStatus transformInDrawing(Document& doc, Entity& entity, const Matrix44& m);

}  // namespace dxf
