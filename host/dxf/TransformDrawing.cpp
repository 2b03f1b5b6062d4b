#include "host/dxf/TransformDrawing.h"

#include <cmath>
#include <deque>
#include <string_view>
#include <vector>

namespace dxf {

namespace {

bool isDimension(std::string_view type) {
  return type == "DIMENSION" || type == "ARC_DIMENSION" || type == "LARGE_RADIAL_DIMENSION";
}

}  // namespace

TransformStatus transformInDrawing(Document& doc, Entity& entity, const Matrix44& m) {
  const bool dimension = isDimension(entity.type), table = entity.type == "ACAD_TABLE";
  if (!dimension && !table) return transformEntity(entity, m);
  const std::string_view name = trimBlanks(entity.value(2));
  // Only anonymous blocks belong to the entity; a named block is the user's and stays as drawn.
  std::deque<Entity>* block = name.size() > 1 && name.front() == '*' ? doc.blockEntities(name) : nullptr;
  if (block == nullptr) return transformEntity(entity, m);
  // A block that several entities draw cannot follow one of them without moving the others' pictures.
  if (doc.blockReferences(name) > 1) return TransformStatus::NotSupported;

  // A dimension's block is world geometry drawn without an insertion transform: it takes the matrix as it
  // is. A table's block lies in the table's own coordinates, placed by the table: it only grows.
  Matrix44 blockMatrix = m;
  if (table) {
    const double s = std::sqrt(m.m[0][0] * m.m[0][0] + m.m[1][0] * m.m[1][0] + m.m[2][0] * m.m[2][0]);
    blockMatrix = Matrix44{{{s, 0.0, 0.0, 0.0}, {0.0, s, 0.0, 0.0}, {0.0, 0.0, s, 0.0}, {0.0, 0.0, 0.0, 1.0}}};
  }
  // Either the entity and all of its drawing move, or nothing does.
  const Entity savedEntity = entity;
  const TransformStatus status = transformEntity(entity, m);
  if (status != TransformStatus::Ok) return status;
  std::vector<Entity> saved;
  saved.reserve(block->size());
  for (const Entity& e : *block) saved.push_back(e);
  for (Entity& e : *block) {
    if (e.erased) continue;
    doc.journal().recordChange(e);  // the command's undo brings the block back with the entity
    const TransformStatus s = transformEntity(e, blockMatrix);
    if (s == TransformStatus::Ok) continue;
    for (std::size_t i = 0; i < saved.size(); ++i) (*block)[i] = saved[i];
    entity = savedEntity;
    return s;
  }
  return TransformStatus::Ok;
}

}  // namespace dxf
