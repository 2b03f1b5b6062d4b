// Opening and closing objects, and what every object answers about itself.
#include "host/db/DbModel.h"
#include "host/db/Undo.h"
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

using host::db::Kind;
using host::db::ObjectRecord;

namespace {

bool holds(const std::vector<AcDb::OpenMode>& opens, AcDb::OpenMode mode) {
  return std::find(opens.begin(), opens.end(), mode) != opens.end();
}

// Whether one more open in `mode` may join the opens already held.
Acad::ErrorStatus admit(const std::vector<AcDb::OpenMode>& opens, AcDb::OpenMode mode) {
  switch (mode) {
    case AcDb::kForRead:
      return holds(opens, AcDb::kForWrite) ? Acad::eWasOpenForWrite : Acad::eOk;
    case AcDb::kForWrite:
      if (holds(opens, AcDb::kForWrite)) return Acad::eWasOpenForWrite;
      if (holds(opens, AcDb::kForNotify)) return Acad::eWasOpenForNotify;
      if (holds(opens, AcDb::kForRead)) return Acad::eWasOpenForRead;
      return Acad::eOk;
    case AcDb::kForNotify:
      return holds(opens, AcDb::kForNotify) ? Acad::eWasOpenForNotify : Acad::eOk;
  }
  return Acad::eInvalidOpenState;
}

// The classes of the objects the host makes for stored records: by kind and, for entities, DXF type.
enum PoolClass : std::uint8_t {
  kPoint, kLine, kEntity, kBlockRecord, kLayerRecord, kLinetypeRecord, kBlockTable, kLayerTable, kLinetypeTable,
  kPoolClasses
};

PoolClass poolClassOf(const ObjectRecord& r) {
  switch (r.kind) {
    case Kind::Entity: return r.item->type == "POINT" ? kPoint : r.item->type == "LINE" ? kLine : kEntity;
    case Kind::BlockRecord: return kBlockRecord;
    case Kind::LayerRecord: return kLayerRecord;
    case Kind::LinetypeRecord: return kLinetypeRecord;
    case Kind::BlockTable: return kBlockTable;
    case Kind::LayerTable: return kLayerTable;
    case Kind::LinetypeTable: return kLinetypeTable;
  }
  return kEntity;
}

// Closed objects the host made, kept for the next open of a record of their class. A transformation opens
// every entity of a drawing and the layer of each one after the other; without these it would allocate
// and free two objects and an open list each time. A few of each class are enough for that.
class ClosedObjects {
 public:
  static constexpr std::size_t kKeep = 8;
  ClosedObjects() {
    for (auto& kept : kept_) kept.reserve(kKeep);
  }
  AcDbObject* take(PoolClass c) {
    std::vector<AcDbObject*>& kept = kept_[c];
    if (kept.empty()) return nullptr;
    AcDbObject* object = kept.back();
    kept.pop_back();
    return object;
  }
  bool hasRoom(PoolClass c) const { return kept_[c].size() < kKeep; }
  void keep(PoolClass c, AcDbObject* object) { kept_[c].push_back(object); }

 private:
  std::vector<AcDbObject*> kept_[kPoolClasses];
};

ClosedObjects& closedObjects() {
  static auto* objects = new ClosedObjects;
  return *objects;
}

AcDbObject* newObject(PoolClass c, AcDbImpObject* imp) {
  switch (c) {
    case kPoint: return new AcDbPoint(imp);
    case kLine: return new AcDbLine(imp);
    case kEntity: return new AcDbEntity(imp);
    case kBlockRecord: return new AcDbBlockTableRecord(imp);
    case kLayerRecord: return new AcDbLayerTableRecord(imp);
    case kLinetypeRecord: return new AcDbLinetypeTableRecord(imp);
    case kBlockTable: return new AcDbBlockTable(imp);
    case kLayerTable: return new AcDbLayerTable(imp);
    case kLinetypeTable: return new AcDbLinetypeTable(imp);
    case kPoolClasses: break;
  }
  return nullptr;
}

// The in-memory object for a record: a kept one of its class, or a new one.
AcDbObject* makeObject(ObjectRecord& r) {
  const PoolClass c = poolClassOf(r);
  AcDbObject* object = closedObjects().take(c);
  if (object == nullptr) {
    auto imp = std::make_unique<AcDbImpObject>();
    imp->pool = c;
    object = newObject(c, imp.get());
    if (object == nullptr) return nullptr;
    imp.release();
  }
  object->imp()->kind = r.kind;
  object->imp()->record = &r;
  return object;
}

// Keeps a closed object the host made for the next open instead of freeing it; false when it is not one
// to keep (made by the module, or its drawing closed meanwhile) or enough of its class are kept.
bool keepClosed(AcDbObject& object) {
  AcDbImpObject& imp = *object.imp();
  if (imp.pool >= kPoolClasses || imp.record == nullptr) return false;
  const auto c = static_cast<PoolClass>(imp.pool);
  if (!closedObjects().hasRoom(c)) return false;
  if (imp.record->open == &object) imp.record->open = nullptr;
  imp.record = nullptr;
  imp.opens.clear();
  imp.nameCache.clear();
  closedObjects().keep(c, &object);
  return true;
}

}  // namespace

bool AcDbImpObject::writable() const { return isNew() || (record != nullptr && holds(opens, AcDb::kForWrite)); }

namespace host::db {

Acad::ErrorStatus openObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  object = nullptr;
  if (mode != AcDb::kForRead && mode != AcDb::kForWrite && mode != AcDb::kForNotify) return Acad::eInvalidOpenState;
  if (id.isNull()) return Acad::eNullObjectId;
  ObjectRecord* r = findRecord(id);
  if (r == nullptr) return Acad::eUnknownHandle;
  if (r->erased() && !openErased) return Acad::eWasErased;
  if (r->open != nullptr) {
    std::vector<AcDb::OpenMode>& opens = r->open->imp()->opens;
    if (Acad::ErrorStatus es = admit(opens, mode); es != Acad::eOk) return es;
    opens.push_back(mode);
    object = r->open;
    return Acad::eOk;
  }
  AcDbObject* made = makeObject(*r);
  if (made == nullptr) return Acad::eInvalidInput;
  made->imp()->opens.push_back(mode);
  r->open = made;
  object = made;
  return Acad::eOk;
}

Acad::ErrorStatus checkWritable(const AcDbObject& object) {
  const AcDbImpObject& imp = *object.imp();
  if (imp.detached) return Acad::eNoDatabase;
  if (!imp.writable()) return Acad::eNotOpenForWrite;
  // Every change of a stored record comes through here: its state before the change goes to the journal,
  // for undo and for taking back a command that fails.
  if (imp.record != nullptr && (imp.record->kind == Kind::LayerRecord || imp.record->kind == Kind::LayerTable))
    imp.record->drawing->layersChanged();
  if (imp.record != nullptr && imp.record->item != nullptr) {
    try {
      imp.record->drawing->doc().journal().recordChange(*imp.record->item);
    } catch (const std::bad_alloc&) {
      host::noteCommandFailure("out of memory");
      throw;
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus checkAddable(const AcDbObject& container, const AcDbObject* object, Acad::ErrorStatus nullStatus) {
  if (Acad::ErrorStatus es = checkWritable(container); es != Acad::eOk) return es;
  if (object == nullptr) return nullStatus;
  return object->isNewObject() ? Acad::eOk : Acad::eAlreadyInDb;
}

AcDbObjectId adopt(AcDbObject& object, ObjectRecord& record) {
  AcDbImpObject& imp = *object.imp();
  imp.record = &record;
  imp.opens.assign(1, AcDb::kForWrite);
  imp.entity = {};
  imp.layer.clear();
  imp.newLayer = {};
  record.open = &object;
  return record.id();
}

}  // namespace host::db

// ---- AcDbObject ----------------------------------------------------------------------------------------

AcDbObject::~AcDbObject() {
  // Deleted directly instead of closed: the open ends all the same.
  if (imp_->record != nullptr && imp_->record->open == this) imp_->record->open = nullptr;
  delete imp_;
}

AcDbObjectId AcDbObject::objectId() const { return imp_->record ? imp_->record->id() : AcDbObjectId(); }

AcDbObjectId AcDbObject::ownerId() const { return imp_->record ? imp_->record->owner() : AcDbObjectId(); }

AcDbDatabase* AcDbObject::database() const {
  AcDbImpDatabase* drawing = imp_->drawing();
  return drawing ? &drawing->facade() : nullptr;
}

Acad::ErrorStatus AcDbObject::close() {
  if (imp_->record != nullptr && imp_->opens.size() > 1) {
    imp_->opens.pop_back();
    return Acad::eOk;
  }
  if (keepClosed(*this)) return Acad::eOk;
  delete this;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (imp_->isNew()) return Acad::eNotInDatabase;
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  ObjectRecord& r = *imp_->record;
  // The store keeps every table record; only entities can go.
  if (r.kind != Kind::Entity) return Acad::eNotApplicable;
  if (!erasing) return r.erased() ? Acad::eNotApplicable : Acad::eOk;  // the store cannot take an erase back
  if (r.erased()) return Acad::eWasErased;
  r.drawing->doc().erase(*r.item);
  r.highlighted = false;
  return Acad::eOk;
}

bool AcDbObject::isErased() const { return imp_->record != nullptr && imp_->record->erased(); }

bool AcDbObject::isReadEnabled() const { return imp_->readable(); }

bool AcDbObject::isWriteEnabled() const { return imp_->writable(); }

bool AcDbObject::isNotifyEnabled() const { return holds(imp_->opens, AcDb::kForNotify); }

bool AcDbObject::isNewObject() const { return imp_->isNew(); }

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (imp_->isNew()) return Acad::eOk;
  if (imp_->detached) return Acad::eNoDatabase;
  if (holds(imp_->opens, AcDb::kForWrite)) return Acad::eWasOpenForWrite;
  if (imp_->opens.size() > 1) return Acad::eHadMultipleReaders;
  imp_->opens.front() = AcDb::kForWrite;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  if (imp_->isNew()) return Acad::eOk;
  if (imp_->detached) return Acad::eNoDatabase;
  auto it = std::find(imp_->opens.begin(), imp_->opens.end(), AcDb::kForWrite);
  if (it == imp_->opens.end()) return Acad::eNotOpenForWrite;
  *it = AcDb::kForRead;
  return Acad::eOk;
}

// ---- opening by id -------------------------------------------------------------------------------------

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  return host::db::openObject(object, id, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  entity = nullptr;
  ObjectRecord* r = host::db::findRecord(id);
  // Refused before opening, so that a refused open leaves the object's open state as it was.
  if (r != nullptr && r->kind != Kind::Entity) return Acad::eNotAnEntity;
  AcDbObject* object = nullptr;
  Acad::ErrorStatus es = host::db::openObject(object, id, mode, openErased);
  if (es == Acad::eOk) entity = static_cast<AcDbEntity*>(object);
  return es;
}

// ---- ids -----------------------------------------------------------------------------------------------

bool AcDbObjectId::isValid() const { return host::db::findRecord(*this) != nullptr; }

bool AcDbObjectId::isErased() const {
  ObjectRecord* r = host::db::findRecord(*this);
  return r != nullptr && r->erased();
}

AcDbDatabase* AcDbObjectId::database() const {
  ObjectRecord* r = host::db::findRecord(*this);
  return r ? &r->drawing->facade() : nullptr;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
  name[0] = name[1] = 0;
  if (id.isNull()) return Acad::eNullObjectId;
  name[0] = id.asOldId();
  return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  id.setFromOldId(name[0]);
  if (id.isNull()) return Acad::eNullObjectId;
  if (!id.isValid()) {
    id.setNull();
    return Acad::eUnknownHandle;
  }
  return Acad::eOk;
}
