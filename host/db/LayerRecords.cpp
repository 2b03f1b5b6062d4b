// Layer records: visibility, lock, colour and linetype, read from and written to the LAYER record, or
// kept with a new record until it is added.
#include "host/db/DbModel.h"
#include "sdk/AcDbSymbolTables.h"

#include <cstdlib>

using host::db::Kind;
using host::db::ObjectRecord;

namespace host::db {

void setLayerFlag(const dxf::LayerRecord& layer, int bit, bool on) {
  dxf::TagList& tags = layer.record().tags;
  std::optional<std::size_t> i = tags.find(70);
  long long flags = i ? tags.integer(*i).value_or(0) : 0;
  long long changed = on ? (flags | bit) : (flags & ~static_cast<long long>(bit));
  if (i) {
    if (changed != flags) tags.setInteger(*i, changed);
  } else if (changed != 0) {
    std::optional<std::size_t> name = tags.find(2);
    tags.insert(name ? *name + 1 : tags.size(), 70, std::to_string(changed));
  }
}

}  // namespace host::db

namespace {

// The stored record behind the object; nothing while the record is new or detached.
std::optional<dxf::LayerRecord> stored(const AcDbObject& object) {
  const ObjectRecord* r = object.imp()->record;
  if (r == nullptr) return std::nullopt;
  return dxf::LayerRecord(*r->item);
}

bool storedFlag(const dxf::LayerRecord& layer, int bit) {
  std::optional<std::size_t> i = layer.record().tags.find(70);
  return i && (layer.record().tags.integer(*i).value_or(0) & bit) != 0;
}

template <class Change>
Acad::ErrorStatus change(AcDbLayerTableRecord& record, Change&& apply) {
  if (Acad::ErrorStatus es = host::db::checkWritable(record); es != Acad::eOk) return es;
  apply(stored(record), record.imp()->newLayer);
  return Acad::eOk;
}

// Asked for every entity a transformation walks, so the stored record's answer is kept with it.
bool readFlag(const AcDbLayerTableRecord& record, bool host::db::NewLayer::*pending, bool host::db::LayerState::*kept) {
  ObjectRecord* r = record.imp()->record;
  if (r == nullptr) return record.imp()->newLayer.*pending;
  return r->drawing->layerState(*r).*kept;
}

// Sets one of the visibility flags. A flag already as wanted is not written, so that an untouched
// record is saved as it was read.
Acad::ErrorStatus changeFlag(AcDbLayerTableRecord& record, bool value, bool host::db::NewLayer::*pending,
                             bool (dxf::LayerRecord::*get)() const, void (dxf::LayerRecord::*set)(bool)) {
  return change(record, [&](std::optional<dxf::LayerRecord> layer, host::db::NewLayer& settings) {
    if (!layer)
      settings.*pending = value;
    else if (((*layer).*get)() != value)
      ((*layer).*set)(value);
  });
}

}  // namespace

AcDbLayerTableRecord::AcDbLayerTableRecord() : AcDbSymbolTableRecord(new AcDbImpObject) {
  imp()->kind = Kind::LayerRecord;
}

AcDbLayerTableRecord::~AcDbLayerTableRecord() = default;

bool AcDbLayerTableRecord::isFrozen() const {
  return readFlag(*this, &host::db::NewLayer::frozen, &host::db::LayerState::frozen);
}

bool AcDbLayerTableRecord::isOff() const {
  return readFlag(*this, &host::db::NewLayer::off, &host::db::LayerState::off);
}

bool AcDbLayerTableRecord::isLocked() const {
  return readFlag(*this, &host::db::NewLayer::locked, &host::db::LayerState::locked);
}

bool AcDbLayerTableRecord::VPDFLT() const {
  auto layer = stored(*this);
  return layer ? storedFlag(*layer, 2) : imp()->newLayer.frozenInNewViewports;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  return changeFlag(*this, frozen, &host::db::NewLayer::frozen, &dxf::LayerRecord::frozen, &dxf::LayerRecord::setFrozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) {
  return changeFlag(*this, off, &host::db::NewLayer::off, &dxf::LayerRecord::off, &dxf::LayerRecord::setOff);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
  return changeFlag(*this, locked, &host::db::NewLayer::locked, &dxf::LayerRecord::locked, &dxf::LayerRecord::setLocked);
}

Acad::ErrorStatus AcDbLayerTableRecord::setVPDFLT(bool frozenInNewViewports) {
  return change(*this, [&](auto layer, host::db::NewLayer& pending) {
    if (layer)
      host::db::setLayerFlag(*layer, 2, frozenInNewViewports);
    else
      pending.frozenInNewViewports = frozenInNewViewports;
  });
}

AcCmColor AcDbLayerTableRecord::color() const {
  auto layer = stored(*this);
  AcCmColor color;
  int index = layer ? layer->color() : imp()->newLayer.color;
  if (color.setColorIndex(static_cast<Adesk::UInt16>(std::abs(index))) != Acad::eOk) color.setColorIndex(7);
  return color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
  // A layer is where "by layer" ends: it needs a colour of the palette itself.
  if (color.isByLayer() || color.isByBlock()) return Acad::eInvalidInput;
  int index = color.colorIndex();
  return change(*this, [&](auto layer, host::db::NewLayer& pending) {
    if (layer) {
      if (layer->color() != index) layer->setColor(index);
    } else {
      pending.color = index;
    }
  });
}

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
  const ObjectRecord* r = imp()->record;
  if (r == nullptr) return imp()->newLayer.linetype;
  const dxf::Document& doc = r->drawing->doc();
  auto ltype = doc.findLinetype(doc.decode(dxf::LayerRecord(*r->item).rawLinetype()));
  return ltype ? r->drawing->linetypeId(*ltype) : AcDbObjectId();
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetypeId) {
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  const ObjectRecord* lt = host::db::findRecord(linetypeId);
  if (lt == nullptr || lt->kind != Kind::LinetypeRecord) return Acad::eInvalidInput;
  const ObjectRecord* r = imp()->record;
  if (r == nullptr) {
    imp()->newLayer.linetype = linetypeId;
    return Acad::eOk;
  }
  if (lt->drawing != r->drawing) return Acad::eWrongDatabase;
  dxf::LayerRecord layer(*r->item);
  std::string_view name = dxf::LinetypeRecord(*lt->item).rawName();
  if (layer.rawLinetype() != name) layer.setRawLinetype(name);
  return Acad::eOk;
}
