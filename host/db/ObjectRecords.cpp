#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "sdk/AcDbSymbolTables.h"

#include <algorithm>
#include <iterator>

namespace host::db {
namespace {

// Drawings by number; 0 names none, so that small numbers never name an object. A drawing's slot is
// emptied when it closes: an id kept across a closed drawing names nothing instead of some object of the
// next drawing.
std::vector<AcDbImpDatabase*>& drawingsByNumber() {
  static auto* drawings = new std::vector<AcDbImpDatabase*>(1, nullptr);
  return *drawings;
}

bool sameNameNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if (x >= 'a' && x <= 'z') x = static_cast<unsigned char>(x - 32);
    if (y >= 'a' && y <= 'z') y = static_cast<unsigned char>(y - 32);
    if (x != y) return false;
  }
  return true;
}

}  // namespace

ObjectRecord* findRecord(AcDbObjectId id) {
  const auto serial = static_cast<std::uint64_t>(id.asOldId());
  const std::vector<AcDbImpDatabase*>& drawings = drawingsByNumber();
  const std::uint64_t number = serial >> 32;
  if (number >= drawings.size() || drawings[number] == nullptr) return nullptr;
  return drawings[number]->recordAt(static_cast<std::uint32_t>(serial));
}

}  // namespace host::db

using host::db::Kind;
using host::db::ObjectRecord;
using host::db::Space;

AcDbImpDatabase::AcDbImpDatabase(std::unique_ptr<dxf::Document> document, std::string path)
    : doc_(std::move(document)), path_(std::move(path)) {
  // The slot is filled once the drawing is complete: should building it fail, no id names a part of it.
  std::vector<AcDbImpDatabase*>& drawings = host::db::drawingsByNumber();
  number_ = drawings.size();
  drawings.push_back(nullptr);

  blockTable = makeRecord(Kind::BlockTable, nullptr).id();
  layerTable = makeRecord(Kind::LayerTable, nullptr).id();
  linetypeTable = makeRecord(Kind::LinetypeTable, nullptr).id();

  // Model space always exists, even in R12 files without a BLOCKS section; R12 names the layouts
  // $MODEL_SPACE and $PAPER_SPACE, which modules know by their later names.
  auto addBlock = [&](std::wstring name, bool isLayout, Space space) {
    ObjectRecord& r = makeRecord(Kind::BlockRecord, nullptr);
    r.index = static_cast<std::uint32_t>(blocks.size());
    blocks.push_back({std::move(name), isLayout, space, r.id()});
  };
  addBlock(ACDB_MODEL_SPACE, true, Space::Model);
  bool paperSeen = false;
  for (const dxf::BlockInfo& b : doc_->blocks()) {
    if (host::db::sameNameNoCase(b.name, "*Model_Space") || host::db::sameNameNoCase(b.name, "$MODEL_SPACE"))
      continue;
    bool paper = host::db::sameNameNoCase(b.name, "*Paper_Space") || host::db::sameNameNoCase(b.name, "$PAPER_SPACE");
    if (paper && paperSeen) continue;
    paperSeen = paperSeen || paper;
    addBlock(paper ? std::wstring(ACDB_PAPER_SPACE) : host::fromUtf8(b.name), b.isLayout,
             paper ? Space::Paper : Space::None);
  }
  modelSpaceBlock = blocks.front().id;

  // Every entity is new here: its record is made without asking whether it has one.
  std::vector<dxf::Entity*> model = doc_->modelSpace();
  modelSpace.reserve(model.size());
  for (dxf::Entity* e : model) modelSpace.push_back(makeRecord(Kind::Entity, e, false).id());
  for (const host::db::BlockSlot& b : blocks)
    if (b.space == Space::Paper) paperSpaceBlock = b.id;
  for (dxf::Entity* e : doc_->paperSpace()) {
    ObjectRecord& r = makeRecord(Kind::Entity, e, false);
    r.paperSpace = true;
    paperSpace.push_back(r.id());
  }

  drawings[number_] = this;
}

// Every open of this drawing's objects ends: they become detached, and the ids stop naming anything.
AcDbImpDatabase::~AcDbImpDatabase() {
  records_.forEach(detach);
  host::db::drawingsByNumber()[number_] = nullptr;
}

ObjectRecord& AcDbImpDatabase::makeRecord(Kind kind, dxf::Entity* item, bool findable) {
  if (kind == Kind::LayerRecord) layerStates_.emplace_back();
  ObjectRecord& r = records_.emplace_back();
  r.slot = static_cast<std::uint32_t>(records_.size());
  r.kind = kind;
  r.drawing = this;
  r.item = item;
  if (kind == Kind::LayerRecord) r.index = static_cast<std::uint32_t>(layerStates_.size() - 1);
  if (item != nullptr && findable) byItem_[item] = &r;
  return r;
}

ObjectRecord* AcDbImpDatabase::recordAt(std::uint32_t slot) {
  if (slot == 0 || slot > records_.size()) return nullptr;
  ObjectRecord& r = records_[slot - 1];
  return r.dropped ? nullptr : &r;
}

AcDbObjectId AcDbImpDatabase::idOf(Kind kind, dxf::Entity& item) {
  auto it = byItem_.find(&item);
  if (it != byItem_.end()) return it->second->id();
  return makeRecord(kind, &item).id();
}

AcDbObjectId AcDbImpDatabase::findLayerId(std::wstring_view name) {
  std::optional<dxf::LayerRecord> layer = doc_->findLayer(host::toUtf8(name));
  return layer ? layerId(*layer) : AcDbObjectId();
}

std::string AcDbImpDatabase::currentLayer() const {
  std::optional<std::string> name = doc_->headerText("$CLAYER");
  return name && !name->empty() ? *name : std::string("0");
}

AcDbObjectId AcDbImpDatabase::addModelSpaceEntity(dxf::Entity& entity) {
  AcDbObjectId id = makeRecord(Kind::Entity, &entity).id();
  modelSpace.push_back(id);
  return id;
}

void AcDbImpDatabase::detach(ObjectRecord& r) {
  if (r.open != nullptr) {
    r.open->imp()->record = nullptr;
    r.open->imp()->detached = true;
    r.open->imp()->opens.clear();
    r.open = nullptr;
  }
}

void AcDbImpDatabase::dropped(const dxf::Entity& item) {
  auto it = byItem_.find(&item);
  if (it == byItem_.end()) return;
  ObjectRecord& r = *it->second;
  const AcDbObjectId id = r.id();
  // Appended entities stand at the end of their space.
  for (std::vector<AcDbObjectId>* space : {&modelSpace, &paperSpace}) {
    auto at = std::find(space->rbegin(), space->rend(), id);
    if (at != space->rend()) space->erase(std::next(at).base());
  }
  detach(r);
  r.item = nullptr;
  r.dropped = true;
  byItem_.erase(it);
}

AcDbObjectId AcDbImpDatabase::layerIdOfRaw(std::string_view rawName) {
  auto it = layerIdsByRawName_.find(rawName);
  if (it != layerIdsByRawName_.end()) return it->second;
  std::optional<dxf::LayerRecord> layer = doc_->findLayer(doc_->decode(rawName));
  const AcDbObjectId id = layer ? layerId(*layer) : AcDbObjectId();
  layerIdsByRawName_.emplace(std::string(rawName), id);
  return id;
}

const host::db::LayerState& AcDbImpDatabase::layerState(ObjectRecord& layer) {
  host::db::LayerState& state = layerStates_[layer.index];
  if (state.epoch != layerEpoch_) {
    const dxf::LayerRecord stored(*layer.item);
    state = {layerEpoch_, stored.frozen(), stored.off(), stored.locked()};
  }
  return state;
}

void AcDbImpDatabase::layersChanged() {
  ++layerEpoch_;
  layerIdsByRawName_.clear();
}
