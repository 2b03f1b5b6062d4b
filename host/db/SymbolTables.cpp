// The block, layer and linetype tables and their common record behaviour.
#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"

#include <cstring>
#include <cwchar>

using host::db::Kind;
using host::db::ObjectRecord;

namespace {

bool sameNameNoCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  auto upper = [](wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c; };
  for (std::size_t i = 0; i < a.size(); ++i)
    if (upper(a[i]) != upper(b[i])) return false;
  return true;
}

// Names of table records may not hold the characters that separate names in DXF and on the command line.
bool validRecordName(std::wstring_view name) {
  if (name.empty()) return false;
  for (wchar_t c : name)
    if (c < 0x20 || std::wcschr(L"<>/\\\":;?*|,=`", c) != nullptr) return false;
  return true;
}

AcDbImpDatabase* drawingOf(const AcDbObject& object) { return object.imp()->drawing(); }

// The ids of the table's records in drawing order. The store lists no linetypes; they are looked up by name.
std::vector<AcDbObjectId> recordIds(const AcDbSymbolTable& table) {
  std::vector<AcDbObjectId> ids;
  AcDbImpDatabase* drawing = drawingOf(table);
  if (drawing == nullptr) return ids;
  if (table.imp()->kind == Kind::BlockTable) {
    for (const host::db::BlockSlot& b : drawing->blocks) ids.push_back(b.id);
  } else if (table.imp()->kind == Kind::LayerTable) {
    const dxf::Document& doc = drawing->doc();
    for (std::size_t i = 0; i < doc.layerCount(); ++i) ids.push_back(drawing->layerId(doc.layer(i)));
  }
  return ids;
}

template <class Record>
Acad::ErrorStatus openByName(const AcDbSymbolTable& table, const ACHAR* name, Record*& record, AcDb::OpenMode mode,
                             bool openErased) {
  record = nullptr;
  AcDbObjectId id;
  if (Acad::ErrorStatus es = table.getAt(name, id, openErased); es != Acad::eOk) return es;
  AcDbObject* object = nullptr;
  Acad::ErrorStatus es = host::db::openObject(object, id, mode, openErased);
  record = static_cast<Record*>(object);  // a table holds records of its own kind only
  return es;
}

template <class Iterator>
Acad::ErrorStatus iterate(const AcDbSymbolTable& table, Iterator*& iterator, bool atBeginning, bool skipDeleted) {
  iterator = nullptr;
  if (drawingOf(table) == nullptr) return Acad::eNoDatabase;
  iterator = new Iterator(recordIds(table));
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

}  // namespace

namespace host::db {

// The record's name as the store has it.
std::wstring recordName(const AcDbObject& object) {
  const AcDbImpObject& imp = *object.imp();
  if (imp.isNew()) return imp.newLayer.name;
  if (imp.record == nullptr) return {};
  const ObjectRecord& r = *imp.record;
  const dxf::Document& doc = r.drawing->doc();
  switch (r.kind) {
    case Kind::BlockRecord: return r.drawing->blocks[r.index].name;
    case Kind::LayerRecord: return host::fromUtf8(doc.layerName(dxf::LayerRecord(*r.item)));
    case Kind::LinetypeRecord: return host::fromUtf8(doc.decode(dxf::LinetypeRecord(*r.item).rawName()));
    default: return {};
  }
}

}  // namespace host::db

// ---- records -------------------------------------------------------------------------------------------

AcDbSymbolTableRecord::~AcDbSymbolTableRecord() = default;

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
  std::wstring text = host::db::recordName(*this);
  name = new ACHAR[text.size() + 1];
  std::wmemcpy(name, text.c_str(), text.size() + 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
  imp()->nameCache = host::db::recordName(*this);
  name = imp()->nameCache.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  if (name == nullptr || !validRecordName(name)) return Acad::eInvalidInput;
  // Entities name their layer in the file; renaming a stored record would strand the ones in blocks
  // that this host does not reach, so only records not yet added take a name.
  if (!isNewObject()) return Acad::eNotApplicable;
  imp()->newLayer.name = name;
  return Acad::eOk;
}

// ---- tables --------------------------------------------------------------------------------------------

AcDbSymbolTable::~AcDbSymbolTable() = default;

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
  const ObjectRecord* r = host::db::findRecord(id);
  return r != nullptr && !objectId().isNull() && r->owner() == objectId() && !r->erased();
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id, bool) const {
  id.setNull();
  AcDbImpDatabase* drawing = drawingOf(*this);
  if (drawing == nullptr) return Acad::eNoDatabase;
  if (name == nullptr) return Acad::eInvalidInput;
  switch (imp()->kind) {
    case Kind::BlockTable:
      for (const host::db::BlockSlot& b : drawing->blocks)
        if (sameNameNoCase(b.name, name)) id = b.id;
      break;
    case Kind::LayerTable:
      id = drawing->findLayerId(name);
      break;
    case Kind::LinetypeTable:
      if (auto ltype = drawing->doc().findLinetype(host::toUtf8(name)))
        id = drawing->linetypeId(*ltype);
      else if (sameNameNoCase(L"CONTINUOUS", name))
        // Every drawing has it; a file that left its record out gets one now.
        id = drawing->linetypeId(drawing->doc().ensureContinuousLinetype());
      break;
    default:
      return Acad::eNotApplicable;
  }
  return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

AcDbBlockTable::~AcDbBlockTable() = default;

Acad::ErrorStatus AcDbBlockTable::getAt(const ACHAR* name, AcDbBlockTableRecord*& record, AcDb::OpenMode mode,
                                        bool openErasedRecord) const {
  return openByName(*this, name, record, mode, openErasedRecord);
}

Acad::ErrorStatus AcDbBlockTable::newIterator(AcDbBlockTableIterator*& iterator, bool atBeginning,
                                              bool skipDeleted) const {
  return iterate(*this, iterator, atBeginning, skipDeleted);
}

AcDbLayerTable::~AcDbLayerTable() = default;

Acad::ErrorStatus AcDbLayerTable::getAt(const ACHAR* name, AcDbLayerTableRecord*& record, AcDb::OpenMode mode,
                                        bool openErasedRecord) const {
  return openByName(*this, name, record, mode, openErasedRecord);
}

Acad::ErrorStatus AcDbLayerTable::newIterator(AcDbLayerTableIterator*& iterator, bool atBeginning,
                                              bool skipDeleted) const {
  return iterate(*this, iterator, atBeginning, skipDeleted);
}

Acad::ErrorStatus AcDbLayerTable::add(AcDbLayerTableRecord* record) {
  AcDbObjectId id;
  return add(id, record);
}

Acad::ErrorStatus AcDbLayerTable::add(AcDbObjectId& id, AcDbLayerTableRecord* record) {
  id.setNull();
  if (Acad::ErrorStatus es = host::db::checkAddable(*this, record, Acad::eNullObjectPointer); es != Acad::eOk)
    return es;
  AcDbImpDatabase& drawing = *drawingOf(*this);
  dxf::Document& doc = drawing.doc();
  const host::db::NewLayer& settings = record->imp()->newLayer;
  if (settings.name.empty()) return Acad::eInvalidInput;
  std::string name = host::toUtf8(settings.name);
  if (doc.findLayer(name)) return Acad::eDuplicateRecordName;

  std::string linetype;
  if (!settings.linetype.isNull()) {
    const ObjectRecord* lt = host::db::findRecord(settings.linetype);
    if (lt == nullptr || lt->kind != Kind::LinetypeRecord) return Acad::eInvalidInput;
    if (lt->drawing != &drawing) return Acad::eWrongDatabase;
    linetype = doc.decode(dxf::LinetypeRecord(*lt->item).rawName());
  }
  std::string error;
  std::optional<dxf::LayerRecord> layer = doc.addLayer(name, settings.color, linetype, error);
  if (!layer) return Acad::eInvalidInput;
  layer->setFrozen(settings.frozen);
  layer->setLocked(settings.locked);
  layer->setOff(settings.off);
  if (settings.frozenInNewViewports) host::db::setLayerFlag(*layer, 2, true);

  // From here on the record is the drawing's, open for writing until the caller closes it.
  id = host::db::adopt(*record, *host::db::findRecord(drawing.layerId(*layer)));
  return Acad::eOk;
}

AcDbLinetypeTable::~AcDbLinetypeTable() = default;

Acad::ErrorStatus AcDbLinetypeTable::getAt(const ACHAR* name, AcDbLinetypeTableRecord*& record,
                                           AcDb::OpenMode mode, bool openErasedRecord) const {
  return openByName(*this, name, record, mode, openErasedRecord);
}

AcDbLinetypeTableRecord::~AcDbLinetypeTableRecord() = default;
