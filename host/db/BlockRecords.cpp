// Block records: model space takes new entities; each block lists its entities for iteration.
#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbSymbolTables.h"

#include <cmath>

using host::db::ObjectRecord;
using host::db::Space;

namespace {

const host::db::BlockSlot* slotOf(const AcDbObject& object) {
  const ObjectRecord* r = object.imp()->record;
  return r ? &r->drawing->blocks[r->index] : nullptr;
}

}  // namespace

AcDbBlockTableRecord::~AcDbBlockTableRecord() = default;

bool AcDbBlockTableRecord::isLayout() const {
  const host::db::BlockSlot* slot = slotOf(*this);
  return slot != nullptr && slot->isLayout;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
  iterator = nullptr;
  const host::db::BlockSlot* slot = slotOf(*this);
  if (slot == nullptr) return Acad::eNoDatabase;
  AcDbImpDatabase& drawing = *imp()->record->drawing;
  // The store reaches the entities of model and paper space; other blocks are walked as empty.
  std::vector<AcDbObjectId> ids;
  if (slot->space == Space::Model) ids = drawing.modelSpace;
  if (slot->space == Space::Paper) ids = drawing.paperSpace;
  iterator = new AcDbBlockTableRecordIterator(std::move(ids));
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  id.setNull();
  if (Acad::ErrorStatus es = host::db::checkAddable(*this, entity, Acad::eNullEntityPointer); es != Acad::eOk)
    return es;
  // The store appends to model space only.
  if (slotOf(*this)->space != Space::Model) return Acad::eNotApplicable;

  AcDbImpDatabase& drawing = *imp()->record->drawing;
  dxf::Document& doc = drawing.doc();
  AcDbImpObject& imp = *entity->imp();
  // An entity made with a coordinate that is no finite number (a point built from a failed computation)
  // would write a drawing that no reader takes back.
  for (std::size_t i = 0; i < imp.entity.tags.size(); ++i) {
    const int code = imp.entity.tags.code(i);
    if (code >= 10 && code <= 59)
      if (auto v = imp.entity.tags.number(i); v && !std::isfinite(*v)) return Acad::eInvalidInput;
  }
  std::string layerName = imp.layer.empty() ? drawing.currentLayer() : host::toUtf8(imp.layer);
  std::optional<dxf::LayerRecord> layer = doc.findLayer(layerName);
  if (!layer) layer = doc.findLayer("0");
  std::string rawLayer = layer ? std::string(layer->rawName()) : std::string("0");

  dxf::TagList tags = std::move(imp.entity.tags);
  tags.insert(0, 8, std::move(rawLayer));
  dxf::Entity& stored = doc.appendToModelSpace(imp.entity.type, std::move(tags));

  // From here on the entity is the drawing's, open for writing until the caller closes it.
  id = host::db::adopt(*entity, *host::db::findRecord(drawing.addModelSpaceEntity(stored)));
  return Acad::eOk;
}
