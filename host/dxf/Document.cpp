#include "host/dxf/Document.h"

#include "host/dxf/AtomicFile.h"
#include "host/dxf/BinaryTags.h"
#include "host/dxf/Codec.h"
#include "host/dxf/EntityWriter.h"
#include "host/dxf/FileBytes.h"
#include "host/dxf/Sections.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

namespace dxf {

namespace {

struct VersionName {
  std::string_view code;
  Version version;
};

constexpr VersionName kVersions[] = {
    {"AC1002", Version::R10},   {"AC1003", Version::R10},   {"AC1004", Version::R10},
    {"AC1006", Version::R10},   {"AC1009", Version::R12},   {"AC1012", Version::R13},
    {"AC1014", Version::R14},
    {"AC1015", Version::R2000}, {"AC1018", Version::R2004}, {"AC1021", Version::R2007},
    {"AC1024", Version::R2010}, {"AC1027", Version::R2013}, {"AC1032", Version::R2018},
};

char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// Names of layers, linetypes and blocks compare without regard to the case of ASCII letters.
bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

bool startsWithName(std::string_view s, std::string_view prefix) {
  return s.size() >= prefix.size() && sameName(s.substr(0, prefix.size()), prefix);
}

std::optional<unsigned long long> parseHandle(std::string_view text) {
  text = trimBlanks(text);
  unsigned long long v = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v, 16);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

std::string formatHandle(unsigned long long h) {
  char buf[32];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, h, 16);
  std::string s(buf, end);
  std::transform(s.begin(), s.end(), s.begin(), [](char c) { return c >= 'a' && c <= 'f' ? char(c - 32) : c; });
  return s;
}

bool isLayoutName(std::string_view name) {
  return startsWithName(name, "*Model_Space") || startsWithName(name, "*Paper_Space") ||
         startsWithName(name, "$Model_Space") || startsWithName(name, "$Paper_Space");
}

// Characters a CAD host does not allow in a symbol table name.
bool validSymbolName(std::string_view name) {
  return !name.empty() && name.find_first_of("<>/\\\":;?*|=`") == std::string_view::npos &&
         std::none_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

template <class E, class F>
void forEachRecord(E& e, const F& f) {
  f(e);
  for (E& c : e.children) forEachRecord(c, f);
}

}  // namespace

struct Document::Impl {
  FileBytes buffer;  // the file; every record of the drawing refers into it
  std::string texts;   // of a binary file: its values spelled as text; the records' tags refer into it
  Drawing drawing;
  Codec codec = Codec::utf8();
  std::string versionCode = "AC1009";
  Section* header = nullptr;
  Section* blocks = nullptr;
  Section* entities = nullptr;
  Table* layers = nullptr;
  Table* linetypes = nullptr;
  std::string modelSpaceOwner;            // handle of the *Model_Space block record (R13+)
  std::vector<std::string> paperOwners;   // handles of the *Paper_Space* block records (R13+)
  std::optional<unsigned long long> nextHandle;  // found on first use
  ChangeJournal journal;
  // Block name (ASCII letters lower-cased) -> entities naming it; filled on first use.
  mutable std::optional<std::unordered_map<std::string, std::size_t>> blockUses;

  void index();
  void markPaperSpace(Version version);
  Section& ensureEntities();
  Section& ensureHeader();
  void forgetOnTakeBack(Section* Impl::*slot);
  unsigned long long highestHandle() const;
};

// An entity is in paper space when it says so (group 67 = 1, noted by the reader) or, from R13 on, when its
// owner is a paper-space block record. Decided once for the whole section after reading: the spaces are asked
// for often, and an entity never moves from one to the other.
void Document::Impl::markPaperSpace(Version version) {
  if (!entities || version < Version::R13 || paperOwners.empty()) return;
  for (Entity& e : entities->records) {
    if (e.paperSpace) continue;
    // The first 330 counts; it stands among the first tags of an entity.
    const auto owner = e.tags.find(330);
    if (!owner) continue;
    const std::string_view handle = trimBlanks(e.tags.text(*owner));
    e.paperSpace = !handle.empty() && std::find(paperOwners.begin(), paperOwners.end(), handle) != paperOwners.end();
  }
}

void Document::Impl::index() {
  for (Section& s : drawing.sections) {
    if (s.kind == SectionKind::Header && !header) header = &s;
    if (s.kind == SectionKind::Blocks && !blocks) blocks = &s;
    if (s.kind == SectionKind::Entities && !entities) entities = &s;
    if (s.kind != SectionKind::Tables) continue;
    for (Table& t : s.tables) {
      if (t.name() == "LAYER" && !layers) layers = &t;
      if (t.name() == "LTYPE" && !linetypes) linetypes = &t;
      if (t.name() != "BLOCK_RECORD") continue;
      for (const Entity& r : t.records) {
        const std::string_view name = trimBlanks(r.value(2));
        const std::string handle(trimBlanks(r.value(5)));
        if (sameName(name, "*Model_Space"))
          modelSpaceOwner = handle;
        else if (startsWithName(name, "*Paper_Space") && !handle.empty())
          paperOwners.push_back(handle);
      }
    }
  }
}

// A section the program adds goes again when its step is taken back.
void Document::Impl::forgetOnTakeBack(Section* Impl::*slot) {
  journal.recordUndoAction([this, slot] {
    Section* added = this->*slot;
    drawing.sections.remove_if([added](const Section& s) { return &s == added; });
    this->*slot = nullptr;
  });
}

Section& Document::Impl::ensureHeader() {
  if (header) return *header;
  forgetOnTakeBack(&Impl::header);
  header = &*drawing.sections.insert(drawing.sections.begin(), makeSection(SectionKind::Header, "HEADER"));
  return *header;
}

Section& Document::Impl::ensureEntities() {
  if (entities) return *entities;
  forgetOnTakeBack(&Impl::entities);
  // Entities go before the sections that follow them in a drawing file.
  auto at = std::find_if(drawing.sections.begin(), drawing.sections.end(), [](const Section& s) {
    return s.name() == "OBJECTS" || s.name() == "THUMBNAILIMAGE" || s.name() == "ACDSDATA";
  });
  entities = &*drawing.sections.insert(at, makeSection(SectionKind::Entities, "ENTITIES"));
  return *entities;
}

unsigned long long Document::Impl::highestHandle() const {
  unsigned long long highest = 0;
  auto see = [&highest](const Entity& e) {
    for (std::size_t i = 0; i < e.tags.size(); ++i) {
      const int code = e.tags.code(i);
      if (code == 5 || code == 105) {
        if (auto h = parseHandle(e.tags.text(i))) highest = std::max(highest, *h);
        break;
      }
    }
  };
  for (const Section& s : drawing.sections) {
    for (const Entity& e : s.records) forEachRecord(e, see);
    for (const Table& t : s.tables) {
      see(t.head);
      for (const Entity& e : t.records) see(e);
    }
    for (const Block& b : s.blocks) {
      see(b.begin);
      for (const Entity& e : b.entities) forEachRecord(e, see);
      see(b.end);
    }
  }
  return highest;
}

Document::Document() : impl_(std::make_unique<Impl>()) {}
Document::~Document() = default;

std::unique_ptr<Document> Document::load(const std::filesystem::path& path, std::string& error,
                                         std::vector<std::string>* repairs) {
  const std::string name = path.string();
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec)) {
    error = name + ": is a directory, not a DXF file";
    return nullptr;
  }
  std::optional<FileBytes> bytes = FileBytes::read(path, kMaxFileSize, error);
  if (!bytes) {
    error = name + ": " + error;
    return nullptr;
  }
  return parseBytes(std::move(*bytes), name, error, repairs);
}

std::unique_ptr<Document> Document::parse(std::string bytes, std::string_view name, std::string& error,
                                          std::vector<std::string>* repairs) {
  return parseBytes(FileBytes(std::move(bytes)), name, error, repairs);
}

std::unique_ptr<Document> Document::parseBytes(FileBytes bytes, std::string_view name, std::string& error,
                                               std::vector<std::string>* repairs) {
  const std::string prefix = std::string(name) + ": ";
  if (auto why = refuseFormat(bytes.view())) {
    error = prefix + *why;
    return nullptr;
  }
  if (bytes.size() > kMaxFileSize) {
    error = prefix + "is larger than a drawing may be";
    return nullptr;
  }
  std::unique_ptr<Document> doc(new Document());
  Impl& d = *doc->impl_;
  d.buffer = std::move(bytes);  // from here on the buffer never moves: the records point into it
  const std::string_view buffer = d.buffer.view();
  RepairLog log;
  RepairLog* const recovering = repairs ? &log : nullptr;
  bool read = false;
  std::string readError;
  if (isBinaryDxf(buffer)) {
    BinaryTagReader reader(buffer, d.texts, recovering);
    read = readDrawing(reader, buffer, d.drawing, recovering);
    readError = reader.error();
  } else {
    const std::size_t from = buffer.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
    TagReader reader(buffer, from, recovering);
    read = readDrawing(reader, buffer, d.drawing, recovering);
    readError = reader.error();
  }
  if (!read) {
    if (d.drawing.sections.empty())
      error = prefix + "not a DXF file (" + readError + ")";
    else
      error = prefix + readError;
    return nullptr;
  }
  if (const std::string_view twice = repeatedSection(d.drawing); !twice.empty()) {
    error = prefix + "the drawing holds more than one " + std::string(twice) + " section";
    return nullptr;
  }
  d.index();

  if (auto code = doc->rawHeader("$ACADVER")) d.versionCode = std::string(trimBlanks(*code));
  const auto known = std::find_if(std::begin(kVersions), std::end(kVersions),
                                  [&](const VersionName& v) { return v.code == d.versionCode; });
  if (known == std::end(kVersions)) {
    error = prefix + "DXF version \"" + d.versionCode.substr(0, 40) +
            "\" cannot be read; R2.5 (AC1002) to R2018 (AC1032) can";
    return nullptr;
  }
  doc->version_ = known->version;
  if (doc->version_ < Version::R2007)
    d.codec = Codec::codePage(doc->rawHeader("$DWGCODEPAGE").value_or("ANSI_1252"));
  if (recovering) {
    doc->repairHandles(log);
    *repairs = log.lines();
  }
  d.markPaperSpace(doc->version_);
  return doc;
}

bool Document::isBinary() const { return impl_->drawing.style.binary.has_value(); }

void Document::repairHandles(RepairLog& repairs) {
  const bool handles = hasHandles();
  std::unordered_set<unsigned long long> seen;
  auto check = [&](Entity& e) {
    if (!handles) {
      // A drawing that keeps no handles has no use for an empty one, which other readers refuse.
      const auto i = e.tags.find(5);
      if (i && trimBlanks(e.tags.text(*i)).empty()) {
        e.tags.erase(*i);
        repairs.note("empty handles removed (the drawing keeps no handles)");
      }
      return;
    }
    for (std::size_t i = 0; i < e.tags.size(); ++i) {
      const int code = e.tags.code(i);
      if (code != 5 && code != 105) continue;
      const auto handle = parseHandle(e.tags.text(i));
      if (handle && *handle != 0 && seen.insert(*handle).second) return;
      repairs.note(handle && *handle != 0 ? "records with a duplicate handle given a new one"
                                          : "records with an empty or unreadable handle given a new one");
      e.tags.setText(i, newHandle());
      seen.insert(*parseHandle(e.tags.text(i)));
      return;
    }
  };
  for (Section& s : impl_->drawing.sections) {
    for (Entity& e : s.records) forEachRecord(e, check);
    for (Table& t : s.tables) {
      check(t.head);
      for (Entity& e : t.records) check(e);
    }
    for (Block& b : s.blocks) {
      check(b.begin);
      for (Entity& e : b.entities) forEachRecord(e, check);
      check(b.end);
    }
  }
}

std::string Document::bytes() const {
  Sink out;
  out.reserve(impl_->buffer.size() + impl_->buffer.size() / 8);
  writeDrawing(out, impl_->drawing);
  return out.take();
}

bool Document::save(const std::filesystem::path& path, std::string& error) const {
  return replaceFileAtomically(
      path,
      [this](int fd) {
        Sink out(fd);
        writeDrawing(out, impl_->drawing);
        out.flush();
        return out.errorNumber();
      },
      error);
}

std::string_view Document::versionCode() const { return impl_->versionCode; }

bool Document::hasHandles() const {
  if (version_ >= Version::R13) return true;
  // R12 carries handles only where $HANDLING switches them on.
  const auto handling = rawHeader("$HANDLING");
  return rawHeader("$HANDSEED").has_value() && (!handling || parseInteger(*handling).value_or(1) != 0);
}

std::string Document::decode(std::string_view raw) const { return impl_->codec.decode(raw); }
std::string Document::encode(std::string_view utf8) const { return impl_->codec.encode(utf8); }

std::optional<std::string_view> Document::rawHeader(std::string_view name) const {
  if (!impl_->header) return std::nullopt;
  const TagList& tags = impl_->header->head.tags;
  const auto i = findHeaderVariable(tags, name);
  if (!i || *i + 1 >= tags.size() || tags.code(*i + 1) == 9) return std::nullopt;
  return tags.text(*i + 1);
}

void Document::setRawHeader(std::string_view name, int code, std::string_view text) {
  Entity& head = impl_->ensureHeader().head;
  impl_->journal.recordChange(head);
  TagList& tags = head.tags;
  const auto i = findHeaderVariable(tags, name);
  if (!i) {
    tags.append(9, name);
    tags.append(code, text);
  } else if (*i + 1 < tags.size() && tags.code(*i + 1) == code) {
    if (tags.text(*i + 1) != text) tags.setText(*i + 1, std::string(text));
  } else {
    // The variable is empty or holds a value of another kind (a point where a handle belongs): its
    // value becomes the one tag given, which is what the code says it must be.
    while (*i + 1 < tags.size() && tags.code(*i + 1) != 9) tags.erase(*i + 1);
    tags.insert(*i + 1, code, std::string(text));
  }
}

std::optional<std::string> Document::headerText(std::string_view name) const {
  if (auto raw = rawHeader(name)) return decode(*raw);
  return std::nullopt;
}

void Document::setHeaderText(std::string_view name, std::string_view utf8, int code) {
  setRawHeader(name, code, encode(utf8));
}

std::size_t Document::layerCount() const { return impl_->layers ? impl_->layers->records.size() : 0; }

LayerRecord Document::layer(std::size_t i) const { return LayerRecord(impl_->layers->records.at(i)); }

std::string Document::layerName(const LayerRecord& layer) const { return decode(layer.rawName()); }

std::optional<LayerRecord> Document::findLayer(std::string_view utf8Name) const {
  if (!impl_->layers) return std::nullopt;
  for (Entity& r : impl_->layers->records)
    if (r.type == "LAYER" && sameName(decode(r.value(2)), utf8Name)) return LayerRecord(r);
  return std::nullopt;
}

std::optional<LinetypeRecord> Document::findLinetype(std::string_view utf8Name) const {
  if (!impl_->linetypes) return std::nullopt;
  for (Entity& r : impl_->linetypes->records)
    if (r.type == "LTYPE" && sameName(decode(r.value(2)), utf8Name)) return LinetypeRecord(r);
  return std::nullopt;
}

namespace {

// Keeps the table's entry count in step where it states one.
void countRecords(Table& table) {
  if (auto count = table.head.tags.find(70)) {
    const long long n = table.head.tags.integer(*count).value_or(0);
    if (n < static_cast<long long>(table.records.size()))
      table.head.tags.setInteger(*count, static_cast<long long>(table.records.size()));
  }
}

}  // namespace

Table& Document::ensureTable(std::string_view name) {
  Table*& known = name == "LTYPE" ? impl_->linetypes : impl_->layers;
  if (known) return *known;
  std::list<Section>& sections = impl_->drawing.sections;
  auto tables = std::find_if(sections.begin(), sections.end(),
                             [](const Section& s) { return s.kind == SectionKind::Tables; });
  if (tables == sections.end()) {
    // The tables follow the header and the classes.
    auto at = std::find_if(sections.begin(), sections.end(),
                           [](const Section& s) { return s.kind != SectionKind::Header && s.name() != "CLASSES"; });
    tables = sections.insert(at, makeSection(SectionKind::Tables, "TABLES"));
    const Section* added = &*tables;
    impl_->journal.recordUndoAction([&sections, added] {
      sections.remove_if([added](const Section& s) { return &s == added; });
    });
  }
  // Taken back, the table goes again from the end it was added at (if it got there).
  const bool front = name == "LTYPE";
  impl_->journal.recordUndoAction([&known, &list = tables->tables, front] {
    if (known != nullptr && !list.empty() && known == &(front ? list.front() : list.back())) {
      if (front)
        list.pop_front();
      else
        list.pop_back();
    }
    known = nullptr;
  });
  Table table;
  table.head = makeRecord("TABLE");
  table.head.tags.append(2, name);
  if (hasHandles()) table.head.tags.append(5, newHandle());
  if (version_ >= Version::R13) {
    table.head.tags.append(330, "0");
    table.head.tags.append(100, "AcDbSymbolTable");
  }
  table.head.tags.append(70, "0");
  table.end = makeRecord("ENDTAB");
  // Linetypes come first, as CAD programs write them: a reader meets a layer's linetype before the layer.
  // (Inserting at either end of the deque keeps every other table where it is.)
  known = name == "LTYPE" ? &tables->tables.emplace_front(std::move(table))
                          : &tables->tables.emplace_back(std::move(table));
  return *known;
}

LinetypeRecord Document::ensureContinuousLinetype() {
  if (auto existing = findLinetype("CONTINUOUS")) return *existing;
  Table& table = ensureTable("LTYPE");
  impl_->journal.recordAppend(table.records);
  impl_->journal.recordChange(table.head);
  Entity& e = table.records.emplace_back();
  e.type = "LTYPE";
  TagList& tags = e.tags;
  if (hasHandles()) tags.append(5, newHandle());
  if (version_ >= Version::R13) {
    if (!table.handle().empty()) tags.append(330, table.handle());
    tags.append(100, "AcDbSymbolTableRecord");
    tags.append(100, "AcDbLinetypeTableRecord");
  }
  tags.append(2, "CONTINUOUS");
  tags.append(70, "0");
  tags.append(3, "Solid line");
  tags.append(72, "65");
  tags.append(73, "0");
  tags.append(40, "0.0");
  countRecords(table);
  return LinetypeRecord(e);
}

std::optional<LayerRecord> Document::addLayer(std::string_view utf8Name, int color, std::string_view utf8Linetype,
                                              std::string& error) {
  if (!impl_->layers) {
    ensureTable("LAYER");
    if (!sameName(utf8Name, "0") && validSymbolName(utf8Name) && !addLayer("0", 7, "", error)) return std::nullopt;
  }
  Table* table = impl_->layers;
  if (!validSymbolName(utf8Name)) {
    error = "\"" + std::string(utf8Name) + "\" is not a valid layer name";
    return std::nullopt;
  }
  if (findLayer(utf8Name)) {
    error = "the layer \"" + std::string(utf8Name) + "\" exists already";
    return std::nullopt;
  }
  std::string linetype;
  if (utf8Linetype.empty()) {
    linetype = std::string(ensureContinuousLinetype().rawName());
  } else if (auto lt = findLinetype(utf8Linetype)) {
    linetype = std::string(lt->rawName());
  } else {
    error = "the linetype \"" + std::string(utf8Linetype) + "\" does not exist";
    return std::nullopt;
  }
  if (color == 0 || color < -255 || color > 255) color = 7;

  // The new record copies the shape of layer "0", which the file's writer made right for its version
  // (subclass markers, line weight, plot style); its own data, reactors and extended data stay behind.
  const std::optional<LayerRecord> zero = findLayer("0");
  const bool handles = hasHandles();
  impl_->journal.recordAppend(table->records);
  impl_->journal.recordChange(table->head);
  Entity& e = table->records.emplace_back();
  e.type = "LAYER";
  TagList& tags = e.tags;
  bool named = false;
  if (zero) {
    const TagList& model = zero->record().tags;
    for (std::size_t i = 0; i < model.size(); ++i) {
      const int code = model.code(i);
      if (code == 102) {  // skip the {ACAD_REACTORS ... } and {ACAD_XDICTIONARY ... } groups
        while (i + 1 < model.size() && !(model.code(i + 1) == 102 && trimBlanks(model.text(i + 1)) == "}")) ++i;
        ++i;
        continue;
      }
      if (code == 360 || code >= 1000) continue;
      if (code == 5) {
        if (handles) tags.append(5, newHandle());
      } else if (code == 330) {
        tags.append(330, table->handle().empty() ? model.text(i) : table->handle());
      } else if (code == 2) {
        tags.append(2, encode(utf8Name));
        named = true;
      } else if (code == 70) {
        tags.append(70, "0");
      } else if (code == 62) {
        tags.append(62, std::to_string(std::abs(color)));
      } else if (code == 6) {
        tags.append(6, linetype);
      } else {
        tags.append(code, model.text(i));
      }
    }
  }
  if (!named) {
    tags = TagList();
    if (handles) tags.append(5, newHandle());
    if (version_ >= Version::R13) {
      if (!table->handle().empty()) tags.append(330, table->handle());
      tags.append(100, "AcDbSymbolTableRecord");
      tags.append(100, "AcDbLayerTableRecord");
    }
    tags.append(2, encode(utf8Name));
    tags.append(70, "0");
    tags.append(62, std::to_string(std::abs(color)));
    tags.append(6, linetype);
  }
  if (!tags.find(62)) tags.append(62, std::to_string(std::abs(color)));
  if (!tags.find(6)) tags.append(6, linetype);

  countRecords(*table);
  return LayerRecord(e);
}

std::vector<BlockInfo> Document::blocks() const {
  std::vector<BlockInfo> out;
  if (!impl_->blocks) return out;
  for (const Block& b : impl_->blocks->blocks) {
    const std::string_view raw = b.begin.value(2);
    out.push_back(BlockInfo{decode(raw), trimBlanks(b.begin.value(5)), isLayoutName(trimBlanks(raw))});
  }
  return out;
}

namespace {

std::string lowerName(std::string_view name) {
  std::string s(trimBlanks(name));
  for (char& c : s) c = lower(c);
  return s;
}

// Entity types whose group 2 names a block they draw.
bool drawsBlock(std::string_view type) {
  return type == "INSERT" || type == "DIMENSION" || type == "ARC_DIMENSION" ||
         type == "LARGE_RADIAL_DIMENSION" || type == "ACAD_TABLE";
}

}  // namespace

std::deque<Entity>* Document::blockEntities(std::string_view rawName) {
  if (!impl_->blocks) return nullptr;
  for (Block& b : impl_->blocks->blocks)
    if (sameName(trimBlanks(b.begin.value(2)), trimBlanks(rawName))) return &b.entities;
  return nullptr;
}

std::size_t Document::blockReferences(std::string_view rawName) const {
  auto& uses = impl_->blockUses;
  if (!uses) {
    uses.emplace();
    // Erased entities count too: undo may bring them back, and a count too high only keeps a block still.
    auto see = [&uses](const Entity& e) {
      if (drawsBlock(e.type)) ++(*uses)[lowerName(e.value(2))];
    };
    for (const Section& s : impl_->drawing.sections) {
      for (const Entity& e : s.records) see(e);
      for (const Block& b : s.blocks)
        for (const Entity& e : b.entities) see(e);
    }
  }
  const auto it = uses->find(lowerName(rawName));
  return it == uses->end() ? 0 : it->second;
}

namespace {

}  // namespace

std::vector<Entity*> Document::modelSpace() const {
  std::vector<Entity*> out;
  if (!impl_->entities) return out;
  out.reserve(impl_->entities->records.size());
  for (Entity& e : impl_->entities->records)
    if (!e.erased && !e.paperSpace) out.push_back(&e);
  return out;
}

std::vector<Entity*> Document::paperSpace() const {
  std::vector<Entity*> out;
  if (!impl_->entities) return out;
  for (Entity& e : impl_->entities->records)
    if (!e.erased && e.paperSpace) out.push_back(&e);
  return out;
}

std::string_view Document::handleOf(const Entity& entity) { return trimBlanks(entity.value(5)); }

std::string Document::layerOf(const Entity& entity) const { return decode(entity.value(8, "0")); }

Entity& Document::appendToModelSpace(std::string_view type, TagList tags) {
  impl_->blockUses.reset();
  const bool handles = hasHandles();
  const bool subclasses = version_ >= Version::R13;
  std::string handle = handles ? newHandle() : std::string();
  std::deque<Entity>& records = impl_->ensureEntities().records;
  impl_->journal.recordAppend(records);
  Entity& e = records.emplace_back();
  e.type = type;
  TagList& out = e.tags;
  out.reserve(tags.size() + 4);
  if (handles) out.append(5, handle);
  if (subclasses) {
    if (!impl_->modelSpaceOwner.empty()) out.append(330, impl_->modelSpaceOwner);
    out.append(100, "AcDbEntity");
  }
  const std::size_t common = out.size();
  for (std::size_t i = 0; i < tags.size(); ++i) {
    const int code = tags.code(i);
    const std::string_view text = tags.text(i);
    if (code == 5 || code == 330) continue;
    if (code == 100 && (!subclasses || trimBlanks(text) == "AcDbEntity")) continue;
    if (!subclasses && (code == 102 || code == 360)) continue;
    out.append(code, text);
  }
  if (!out.find(8)) out.insert(common, 8, "0");  // every entity sits on a layer
  return e;
}

void Document::erase(Entity& entity) {
  impl_->journal.recordChange(entity);
  entity.erased = true;
}

std::string Document::newHandle() {
  // The seed is looked at again each time: an undo may have given the header its older seed back.
  const unsigned long long seed = parseHandle(rawHeader("$HANDSEED").value_or("")).value_or(1);
  if (!impl_->nextHandle || *impl_->nextHandle != seed) impl_->nextHandle = std::max(seed, impl_->highestHandle() + 1);
  const unsigned long long handle = (*impl_->nextHandle)++;
  setRawHeader("$HANDSEED", 5, formatHandle(*impl_->nextHandle));
  return formatHandle(handle);
}

ChangeJournal& Document::journal() { return impl_->journal; }

}  // namespace dxf
