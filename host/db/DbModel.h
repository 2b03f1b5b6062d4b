// The host's side of the drawing database: which store item an object id names, the open state of the
// in-memory objects, and the data of objects the module made that belong to no drawing yet.
//
// Every object of an open drawing has an ObjectRecord, made when the drawing is opened (tables, blocks,
// model and paper space entities) or when an id is first asked for (layer and linetype records). The
// in-memory AcDbObject exists only while the object is open; the record points at it then. Changes go
// straight into the DXF store, so closing an object has nothing to write back.
#pragma once

#include "host/dxf/Document.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbObject.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace host::db {

enum class Kind { Entity, BlockRecord, LayerRecord, LinetypeRecord, BlockTable, LayerTable, LinetypeTable };

// Which entity sequence of the store a block record stands for.
enum class Space { Model, Paper, None };

struct ObjectRecord {
  std::uint64_t serial = 0;
  Kind kind = Kind::Entity;
  AcDbImpDatabase* drawing = nullptr;
  dxf::Entity* item = nullptr;  // the entity, LAYER or LTYPE record in the store
  std::size_t block = 0;        // index into the drawing's blocks, for block records
  AcDbObjectId owner;
  bool erased = false;
  bool highlighted = false;
  AcDbObject* open = nullptr;  // the in-memory object while it is open

  AcDbObjectId id() const { return AcDbObjectId().setFromOldId(static_cast<std::int64_t>(serial)); }
};

struct BlockSlot {
  std::wstring name;
  bool isLayout = false;
  Space space = Space::None;
  AcDbObjectId id;
};

// Settings of a layer record made with new, applied when it is added to the layer table.
struct NewLayer {
  std::wstring name;
  bool frozen = false, off = false, locked = false, frozenInNewViewports = false;
  int color = 7;
  AcDbObjectId linetype;
};

// The record an id names in any open drawing; null for the null id and for ids of closed drawings.
ObjectRecord* findRecord(AcDbObjectId id);

}  // namespace host::db

class AcDbImpDatabase {
 public:
  explicit AcDbImpDatabase(std::unique_ptr<dxf::Document> document, std::string path);
  ~AcDbImpDatabase();
  AcDbImpDatabase(const AcDbImpDatabase&) = delete;
  AcDbImpDatabase& operator=(const AcDbImpDatabase&) = delete;

  dxf::Document& doc() { return *doc_; }
  const dxf::Document& doc() const { return *doc_; }
  AcDbDatabase& facade() { return facade_; }
  const std::string& path() const { return path_; }
  void setPath(std::string path) { path_ = std::move(path); }

  // The id of a store item, made on first request.
  AcDbObjectId idOf(host::db::Kind kind, dxf::Entity& item, AcDbObjectId owner);
  AcDbObjectId layerId(const dxf::LayerRecord& layer) { return idOf(host::db::Kind::LayerRecord, layer.record(), layerTable); }
  AcDbObjectId linetypeId(const dxf::LinetypeRecord& ltype) {
    return idOf(host::db::Kind::LinetypeRecord, ltype.record(), linetypeTable);
  }
  // Layer by name (ASCII case ignored); null when the drawing has none.
  AcDbObjectId findLayerId(std::wstring_view name);
  // The current layer's name, UTF-8 ($CLAYER; "0" when the header does not say).
  std::string currentLayer() const;
  // The id of a model space entity the store has just appended.
  AcDbObjectId addModelSpaceEntity(dxf::Entity& entity);

  // Ends every open of this drawing's objects: they become detached, and the ids stop naming anything.
  void detachAll();

  // A step of the drawing's change journal is being taken back: a record got its old state again, or a
  // record appended during the step is about to go (its id stops naming anything, an open of it ends).
  void restored(const dxf::Entity& item);
  void dropped(const dxf::Entity& item);

  AcDbObjectId blockTable, layerTable, linetypeTable, modelSpaceBlock;
  std::vector<host::db::BlockSlot> blocks;
  std::vector<AcDbObjectId> modelSpace, paperSpace;  // in drawing order, erased entities included

 private:
  host::db::ObjectRecord& makeRecord(host::db::Kind kind, dxf::Entity* item, AcDbObjectId owner);
  static void detach(host::db::ObjectRecord& record);

  std::unique_ptr<dxf::Document> doc_;
  std::string path_;
  AcDbDatabase facade_{this};
  std::deque<host::db::ObjectRecord> records_;
  std::unordered_map<const dxf::Entity*, host::db::ObjectRecord*> byItem_;
};

class AcDbImpObject {
 public:
  host::db::Kind kind = host::db::Kind::Entity;
  host::db::ObjectRecord* record = nullptr;  // null while new, and once detached
  bool detached = false;                     // its drawing was closed while it was open
  std::vector<AcDb::OpenMode> opens;         // one entry per open not yet closed

  // Objects made with new: the entity in the form the store appends (common data, then subclass data,
  // layer added on append), its layer name ("" = the current layer), or the new layer's settings.
  dxf::Entity entity;
  std::wstring layer;
  host::db::NewLayer newLayer;

  std::wstring nameCache;  // keeps getName(const ACHAR*&) answers alive while the object is open

  bool isNew() const { return record == nullptr && !detached; }
  bool readable() const { return isNew() || (record != nullptr && !opens.empty()); }
  bool writable() const;
  AcDbImpDatabase* drawing() const { return record ? record->drawing : nullptr; }
  // The entity's tags: its own while new, the store's while resident; null once detached.
  dxf::Entity* entityData() { return record ? record->item : (detached ? nullptr : &entity); }
};

namespace host::db {

// Opens the object an id names, with the open rules of the host (see sdk/AcDbObject.h).
Acad::ErrorStatus openObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased);

// Status of a change to an object: eOk when it may be changed now.
Acad::ErrorStatus checkWritable(const AcDbObject& object);

// Whether `object` may join the drawing through `container` now: the container open for writing, the
// object there (else `nullStatus`) and part of no drawing yet.
Acad::ErrorStatus checkAddable(const AcDbObject& container, const AcDbObject* object, Acad::ErrorStatus nullStatus);

// Makes a new object the in-memory side of its freshly stored record, open for writing as after an
// add or append; returns its id.
AcDbObjectId adopt(AcDbObject& object, ObjectRecord& record);

// A table record's name as the drawing has it (a new layer's own name while it is new).
std::wstring recordName(const AcDbObject& object);

// Sets or clears one bit of a layer's standard flags (70): 1 frozen, 2 frozen in new viewports, 4 locked.
void setLayerFlag(const dxf::LayerRecord& layer, int bit, bool on);

// The working drawing's side; null while none is open.
AcDbImpDatabase* workingDrawing();

}  // namespace host::db
