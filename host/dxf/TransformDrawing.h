// Transformations that reach beyond one entity. A dimension or a table is drawn through an anonymous block of
// its own ("*D12", "*T3"); a CAD program moves that drawing with it, or every viewer shows it where it was.
#pragma once

#include "host/dxf/Document.h"
#include "host/dxf/Transform.h"

namespace dxf {

// Transforms the entity as transformEntity does; a dimension or table takes the entities of its block along.
// On any status but Ok neither the entity nor the block changed.
TransformStatus transformInDrawing(Document& doc, Entity& entity, const Matrix44& m);

}  // namespace dxf
