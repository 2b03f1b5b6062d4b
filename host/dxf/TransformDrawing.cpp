#include "host/dxf/TransformDrawing.h"

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
  if (!isDimension(entity.type)) return transformEntity(entity, m);
  const std::string_view name = trimBlanks(entity.value(2));
  // Only anonymous blocks belong to the dimension; a named block is the user's and stays as drawn.
  std::deque<Entity>* block = name.size() > 1 && name.front() == '*' ? doc.blockEntities(name) : nullptr;
  if (block == nullptr) return transformEntity(entity, m);
  // A block that several entities draw cannot follow one of them without moving the others' pictures.
  if (doc.blockReferences(name) > 1) return TransformStatus::NotSupported;

  // The block's entities are world geometry drawn without an insertion transform, so they take the matrix as
  // it is. Either the dimension and all of its drawing move, or nothing does.
  const Entity savedDimension = entity;
  const TransformStatus status = transformEntity(entity, m);
  if (status != TransformStatus::Ok) return status;
  std::vector<Entity> saved;
  saved.reserve(block->size());
  for (const Entity& e : *block) saved.push_back(e);
  for (Entity& e : *block) {
    if (e.erased) continue;
    const TransformStatus s = transformEntity(e, m);
    if (s == TransformStatus::Ok) continue;
    for (std::size_t i = 0; i < saved.size(); ++i) (*block)[i] = saved[i];
    entity = savedDimension;
    return s;
  }
  return TransformStatus::Ok;
}

}  // namespace dxf
