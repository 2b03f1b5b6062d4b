#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "sdk/AcDbSymbolTables.h"

#include <algorithm>
#include <iterator>

namespace host::db {
namespace {

// Ids are never reused within a session, so an id kept across a closed drawing names nothing instead
// of some object of the next drawing.
std::uint64_t gNextSerial = 1;

std::unordered_map<std::uint64_t, ObjectRecord*>& recordsBySerial() {
  static auto* map = new std::unordered_map<std::uint64_t, ObjectRecord*>;
  return *map;
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
  if (id.isNull()) return nullptr;
  auto& map = recordsBySerial();
  auto it = map.find(static_cast<std::uint64_t>(id.asOldId()));
  return it == map.end() ? nullptr : it->second;
}

}  // namespace host::db

using host::db::Kind;
using host::db::ObjectRecord;
using host::db::Space;

AcDbImpDatabase::AcDbImpDatabase(std::unique_ptr<dxf::Document> document, std::string path)
    : doc_(std::move(document)), path_(std::move(path)) {
  blockTable = makeRecord(Kind::BlockTable, nullptr, {}).id();
  layerTable = makeRecord(Kind::LayerTable, nullptr, {}).id();
  linetypeTable = makeRecord(Kind::LinetypeTable, nullptr, {}).id();

  // Model space always exists, even in R12 files without a BLOCKS section; R12 names the layouts
  // $MODEL_SPACE and $PAPER_SPACE, which modules know by their later names.
  auto addBlock = [&](std::wstring name, bool isLayout, Space space) {
    ObjectRecord& r = makeRecord(Kind::BlockRecord, nullptr, blockTable);
    r.block = blocks.size();
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

  std::vector<dxf::Entity*> model = doc_->modelSpace();
  modelSpace.reserve(model.size());
  byItem_.reserve(model.size());
  for (dxf::Entity* e : model) modelSpace.push_back(idOf(Kind::Entity, *e, modelSpaceBlock));
  AcDbObjectId paperBlock;
  for (const host::db::BlockSlot& b : blocks)
    if (b.space == Space::Paper) paperBlock = b.id;
  for (dxf::Entity* e : doc_->paperSpace()) paperSpace.push_back(idOf(Kind::Entity, *e, paperBlock));
}

AcDbImpDatabase::~AcDbImpDatabase() { detachAll(); }

ObjectRecord& AcDbImpDatabase::makeRecord(Kind kind, dxf::Entity* item, AcDbObjectId owner) {
  ObjectRecord& r = records_.emplace_back();
  r.serial = host::db::gNextSerial++;
  r.kind = kind;
  r.drawing = this;
  r.item = item;
  r.owner = owner;
  host::db::recordsBySerial()[r.serial] = &r;
  if (item != nullptr) byItem_[item] = &r;
  return r;
}

AcDbObjectId AcDbImpDatabase::idOf(Kind kind, dxf::Entity& item, AcDbObjectId owner) {
  auto it = byItem_.find(&item);
  if (it != byItem_.end()) return it->second->id();
  return makeRecord(kind, &item, owner).id();
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
  AcDbObjectId id = idOf(Kind::Entity, entity, modelSpaceBlock);
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
  host::db::recordsBySerial().erase(r.serial);
}

void AcDbImpDatabase::detachAll() {
  for (ObjectRecord& r : records_) detach(r);
  records_.clear();
  byItem_.clear();
}

void AcDbImpDatabase::restored(const dxf::Entity& item) {
  auto it = byItem_.find(&item);
  if (it != byItem_.end()) it->second->erased = item.erased;
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
  r.erased = true;
  byItem_.erase(it);
}
