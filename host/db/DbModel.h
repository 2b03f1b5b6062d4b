// The host's side of the drawing database: which store item an object id names, the open state of the
// in-memory objects, and the data of objects the module made that belong to no drawing yet.
//
// Every object of an open drawing has an ObjectRecord, made when the drawing is opened (tables, blocks,
// model and paper space entities) or when an id is first asked for (layer and linetype records). The
// in-memory AcDbObject exists only while the object is open; the record points at it then. Changes go
// straight into the DXF store, so closing an object has nothing to write back.
//
// An id is the drawing's number (high word; drawings are numbered in the order they were opened, never
// reused in a session) and the record's place among the drawing's records plus one (low word), so finding
// the record an id names is two look-ups by index, however large the drawing.
#pragma once

#include "host/db/StableVector.h"
#include "host/dxf/Document.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbObject.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host::db {

enum class Kind : std::uint8_t {
  Entity, BlockRecord, LayerRecord, LinetypeRecord, BlockTable, LayerTable, LinetypeTable
};

// Which entity sequence of the store a block record stands for.
enum class Space { Model, Paper, None };

// What the transformation asks of the layer of each entity it walks: frozen, off, locked. Kept for each
// layer record while the drawing's layers stay as they are (see AcDbImpDatabase::layersChanged).
struct LayerState {
  std::uint32_t epoch = 0;  // the drawing's layer epoch it was read in; 0 = never read
  bool frozen = false, off = false, locked = false;
};

// One per object, so one per entity of a drawing: kept to what cannot be worked out from elsewhere (the id
// and the owner follow from the drawing, the place and the kind).
struct ObjectRecord {
  AcDbImpDatabase* drawing = nullptr;
  dxf::Entity* item = nullptr;  // the entity, LAYER or LTYPE record in the store
  AcDbObject* open = nullptr;   // the in-memory object while it is open
  std::uint32_t slot = 0;       // the record's place among its drawing's records plus one: the id's low word
  std::uint32_t index = 0;      // block records: the block's place in `blocks`; layer records: their state's
  Kind kind = Kind::Entity;
  bool highlighted = false;
  bool dropped = false;     // appended in a step that was taken back: the id names nothing any more
  bool paperSpace = false;  // entities: owned by the paper-space block

  AcDbObjectId id() const;
  AcDbObjectId owner() const;
  // An entity's erased state is the store's, where undo puts it back; the store keeps every table record.
  bool erased() const { return dropped || (kind == Kind::Entity && item != nullptr && item->erased); }
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
  AcDbObjectId idOf(host::db::Kind kind, dxf::Entity& item);
  AcDbObjectId layerId(const dxf::LayerRecord& layer) { return idOf(host::db::Kind::LayerRecord, layer.record()); }
  AcDbObjectId linetypeId(const dxf::LinetypeRecord& ltype) { return idOf(host::db::Kind::LinetypeRecord, ltype.record()); }
  // The id of this drawing's record with this slot.
  AcDbObjectId idAt(std::uint32_t slot) const {
    return AcDbObjectId().setFromOldId(static_cast<std::int64_t>(number_ << 32 | slot));
  }
  // Layer by name (ASCII case ignored); null when the drawing has none.
  AcDbObjectId findLayerId(std::wstring_view name);
  // The current layer's name, UTF-8 ($CLAYER; "0" when the header does not say).
  std::string currentLayer() const;
  // The id of a model space entity the store has just appended.
  AcDbObjectId addModelSpaceEntity(dxf::Entity& entity);

  // The record with this number (an id's low word); null when there is none or it was dropped.
  host::db::ObjectRecord* recordAt(std::uint32_t slot);

  // A step of the drawing's change journal is being taken back, and a record appended during the step is
  // about to go: its id stops naming anything, an open of it ends.
  void dropped(const dxf::Entity& item);

  // The layer an entity names with its raw layer name (group 8 as in the file); null when the drawing has
  // no such layer. Remembered per name: a drawing's entities name a few layers hundreds of thousands of
  // times.
  AcDbObjectId layerIdOfRaw(std::string_view rawName);
  // A layer's frozen, off and locked state, read from its record once per layer epoch.
  const host::db::LayerState& layerState(host::db::ObjectRecord& layer);
  // Something about the layers may have changed (a layer record or the layer table is about to be changed,
  // a step was taken back): what is remembered about them is read again on next use.
  void layersChanged();

  AcDbObjectId blockTable, layerTable, linetypeTable, modelSpaceBlock, paperSpaceBlock;
  std::vector<host::db::BlockSlot> blocks;
  std::vector<AcDbObjectId> modelSpace, paperSpace;  // in drawing order, erased entities included

 private:
  // A record for a store item; `findable` puts it in byItem_.
  host::db::ObjectRecord& makeRecord(host::db::Kind kind, dxf::Entity* item, bool findable = true);
  static void detach(host::db::ObjectRecord& record);

  struct RawNameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };

  std::unique_ptr<dxf::Document> doc_;
  std::string path_;
  AcDbDatabase facade_{this};
  std::uint64_t number_ = 0;  // the high word of this drawing's ids
  host::db::StableVector<host::db::ObjectRecord> records_;
  // The records of table records and of appended entities by store item, to find them again (idOf, an
  // undo dropping what a command appended). The entities read from the file, which are most of a drawing
  // and are never dropped, are left out.
  std::unordered_map<const dxf::Entity*, host::db::ObjectRecord*> byItem_;
  std::uint32_t layerEpoch_ = 1;
  std::vector<host::db::LayerState> layerStates_;  // by layer record's index
  std::unordered_map<std::string, AcDbObjectId, RawNameHash, std::equal_to<>> layerIdsByRawName_;
};

inline AcDbObjectId host::db::ObjectRecord::id() const { return drawing->idAt(slot); }

inline AcDbObjectId host::db::ObjectRecord::owner() const {
  switch (kind) {
    case Kind::Entity: return paperSpace ? drawing->paperSpaceBlock : drawing->modelSpaceBlock;
    case Kind::BlockRecord: return drawing->blockTable;
    case Kind::LayerRecord: return drawing->layerTable;
    case Kind::LinetypeRecord: return drawing->linetypeTable;
    default: return {};
  }
}

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
  std::uint8_t pool = 0xFF;  // the host made it to open a stored record: its class among the kept ones

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
