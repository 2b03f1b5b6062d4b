#include "host/dxf/Sections.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace dxf {

std::string_view Section::name() const { return trimBlanks(head.value(2)); }

Entity makeRecord(std::string_view type) {
  Entity e;
  e.type = type;
  return e;
}

Section makeSection(SectionKind kind, std::string_view name) {
  Section s;
  s.kind = kind;
  s.head = makeRecord("SECTION");
  s.head.tags.append(2, name);
  s.end = makeRecord("ENDSEC");
  return s;
}

std::optional<std::size_t> findHeaderVariable(const TagList& header, std::string_view name) {
  for (std::size_t i = 0; i < header.size(); ++i)
    if (header.code(i) == 9 && trimBlanks(header.text(i)) == name) return i;
  return std::nullopt;
}

namespace {

bool isStructural(std::string_view type) {
  return type == "SECTION" || type == "ENDSEC" || type == "TABLE" || type == "ENDTAB" || type == "BLOCK" ||
         type == "ENDBLK" || type == "SEQEND" || type == "VERTEX" || type == "ATTRIB" || type == "EOF";
}

// Reads sections, tables, blocks and entities from the tags of a text or a binary file.
template <class Reader>
class DrawingReader {
 public:
  DrawingReader(Reader& reader, RepairLog* repairs) : r_(reader), repairs_(repairs) {}

  bool read(std::string_view buffer, Drawing& d);

 private:
  // The keyword of the 0 tag that comes next, empty when the next tag is no 0 tag or there is none.
  std::string_view nextType() {
    const RawTag* t = r_.peek();
    return (t && t->code == 0) ? trimBlanks(t->text) : std::string_view{};
  }
  std::size_t nextLine() { return r_.line(); }
  bool fail(std::size_t line, const std::string& message) {
    r_.fail(line, message);
    return false;
  }
  bool endedEarly(std::string_view where) {
    if (!r_.failed()) r_.fail(r_.line(), "the file ends inside " + std::string(where));
    return false;
  }
  // In recovery: notes the repair and answers true; otherwise answers false, so that the caller fails.
  bool repair(std::string_view kind) {
    if (!repairs_) return false;
    repairs_->note(kind);
    return true;
  }

  bool readRecord(Entity& e);
  bool readSection(Section& s);
  bool readTable(Table& t);
  bool readOrphanTable(Section& s, std::string_view type);
  bool readBlock(Block& b);
  bool readEntity(std::deque<Entity>& into);
  // In recovery: the tags up to the next 0 tag, which stand where no record holds them.
  void readStrayTags();
  void keepStrayTags(const TagList& tags, std::size_t from);
  void finishRepairs(Drawing& d);

  Reader& r_;
  RepairLog* repairs_;
  std::vector<RawTag> scratch_;
  TagList strayHeader_;             // header variables found outside the HEADER section
  std::deque<Entity> strayEntities_;  // entities found outside a section
};

template <class Reader>
bool DrawingReader<Reader>::readRecord(Entity& e) {
  const RawTag* t = r_.peek();
  const char* start = t->start;
  const std::size_t skippedBefore = r_.skipped();
  e.type = trimBlanks(t->text);
  r_.advance();
  // Collected first so that the record's tag list is allocated once at its exact size.
  scratch_.clear();
  // Group 67 = 1 puts an entity in paper space; noted here while the tags pass by, since the spaces are
  // asked for on every walk and a second scan of every entity's tags would cost as much as reading them.
  bool spaceSeen = false;
  e.paperSpace = false;
  while ((t = r_.peek()) && t->code != 0) {
    if (t->code == 67 && !spaceSeen) {
      spaceSeen = true;
      e.paperSpace = trimBlanks(t->text) == "1";
    }
    scratch_.push_back(*t);
    r_.advance();
  }
  if (r_.failed()) return false;
  e.tags.reserve(scratch_.size());
  for (const RawTag& s : scratch_) e.tags.appendRaw(s.code, s.codeText, s.text);
  e.source = {start, static_cast<std::size_t>(r_.position() - start)};
  // Lines that recovery skipped stand in the record's bytes: it is written from its tags instead.
  if (r_.skipped() != skippedBefore) e.source = {};
  return true;
}

template <class Reader>
bool DrawingReader<Reader>::readEntity(std::deque<Entity>& into) {
  const std::string_view type = nextType();
  if (type == "VERTEX" || type == "ATTRIB" || type == "SEQEND") {
    if (!repair("VERTEX, ATTRIB or SEQEND records outside a POLYLINE or INSERT dropped"))
      return fail(nextLine(), std::string(type) + " stands outside a POLYLINE or INSERT");
    Entity dropped;
    return readRecord(dropped);
  }
  const char* start = r_.peek()->start;
  const std::size_t skippedBefore = r_.skipped();
  Entity& e = into.emplace_back();
  if (!readRecord(e)) return false;
  if (e.type == "POLYLINE") {
    while (nextType() == "VERTEX")
      if (!readRecord(e.children.emplace_back())) return false;
    if (nextType() == "SEQEND") {
      if (!readRecord(e.children.emplace_back())) return false;
    } else if (repair("missing SEQEND of a POLYLINE added")) {
      e.children.push_back(makeRecord("SEQEND"));
    } else {
      if (!r_.peek()) return endedEarly("a POLYLINE");
      return fail(nextLine(), "a POLYLINE is not closed by SEQEND");
    }
  } else if (e.type == "INSERT") {
    while (nextType() == "ATTRIB")
      if (!readRecord(e.children.emplace_back())) return false;
    const bool attributesFollow = parseInteger(e.value(66, "0")).value_or(0) == 1;
    if (nextType() == "SEQEND" && (attributesFollow || !e.children.empty())) {
      if (!readRecord(e.children.emplace_back())) return false;
    } else if (!e.children.empty()) {
      if (repair("missing SEQEND of an INSERT's attributes added")) {
        e.children.push_back(makeRecord("SEQEND"));
      } else {
        if (!r_.peek()) return endedEarly("an INSERT");
        return fail(nextLine(), "the attributes of an INSERT are not closed by SEQEND");
      }
    }
  }
  e.source = {start, static_cast<std::size_t>(r_.position() - start)};
  if (r_.skipped() != skippedBefore) e.source = {};
  return true;
}

template <class Reader>
bool DrawingReader<Reader>::readTable(Table& t) {
  if (!readRecord(t.head)) return false;
  for (;;) {
    const std::string_view type = nextType();
    if (type == "ENDTAB") return readRecord(t.end);
    const bool ended = !r_.peek();
    if (ended || type == "TABLE" || type == "ENDSEC" || type == "SECTION" || type == "EOF") {
      if (repair("missing ENDTAB added")) {
        t.end = makeRecord("ENDTAB");
        return !r_.failed();
      }
      if (ended) return endedEarly("a table");
      return fail(nextLine(), "the table " + std::string(t.name()) + " is not closed by ENDTAB");
    }
    if (!readRecord(t.records.emplace_back())) return false;
  }
}

// In recovery: entries of a table whose TABLE record is missing get one, made after what the entries say
// of their table: its handle is the owner they name.
template <class Reader>
bool DrawingReader<Reader>::readOrphanTable(Section& s, std::string_view type) {
  repairs_->note("missing TABLE records in front of table entries added");
  Table& t = s.tables.emplace_back();
  const std::string name(type);
  while (nextType() == name)
    if (!readRecord(t.records.emplace_back())) return false;
  t.head = makeRecord("TABLE");
  t.head.tags.append(2, name);
  const std::string_view owner = trimBlanks(t.records.front().value(330));
  if (!owner.empty()) {
    t.head.tags.append(5, owner);
    t.head.tags.append(330, "0");
    t.head.tags.append(100, "AcDbSymbolTable");
  }
  t.head.tags.append(70, std::to_string(t.records.size()));
  if (nextType() == "ENDTAB") return readRecord(t.end);
  repairs_->note("missing ENDTAB added");
  t.end = makeRecord("ENDTAB");
  return !r_.failed();
}

template <class Reader>
bool DrawingReader<Reader>::readBlock(Block& b) {
  if (!readRecord(b.begin)) return false;
  for (;;) {
    const std::string_view type = nextType();
    if (type == "ENDBLK") return readRecord(b.end);
    const bool ended = !r_.peek();
    if (ended || type == "BLOCK" || type == "ENDSEC" || type == "SECTION" || type == "EOF") {
      if (repair("missing ENDBLK added")) {
        b.end = makeRecord("ENDBLK");
        return !r_.failed();
      }
      if (ended) return endedEarly("a block");
      return fail(nextLine(), "the block " + std::string(b.begin.value(2)) + " is not closed by ENDBLK");
    }
    if (!readEntity(b.entities)) return false;
  }
}

template <class Reader>
void DrawingReader<Reader>::keepStrayTags(const TagList& tags, std::size_t from) {
  if (from >= tags.size()) return;
  if (tags.code(from) != 9) {
    repairs_->note("tags outside a section dropped", tags.size() - from);
    return;
  }
  std::size_t variables = 0;
  for (std::size_t i = from; i < tags.size(); ++i) {
    if (tags.code(i) == 9) ++variables;
    strayHeader_.append(tags.code(i), tags.text(i));
  }
  repairs_->note("header variables outside the HEADER section moved into it", variables);
}

template <class Reader>
void DrawingReader<Reader>::readStrayTags() {
  Entity stray;
  // Read as the tags of a record: the first of them stands where the 0 tag would.
  const RawTag* t = r_.peek();
  TagList& tags = stray.tags;
  while (t && t->code != 0) {
    tags.append(t->code, t->text);
    r_.advance();
    t = r_.peek();
  }
  keepStrayTags(tags, 0);
}

template <class Reader>
bool DrawingReader<Reader>::readSection(Section& s) {
  const std::size_t line = nextLine();
  if (!readRecord(s.head)) return false;
  const std::string_view name = s.name();
  if (s.head.tags.empty() || s.head.tags.code(0) != 2 || name.empty()) {
    if (!repair("sections without a name dropped")) return fail(line, "the SECTION has no name");
    // Its records go with it, up to where the next section starts.
    for (std::string_view type = nextType(); r_.peek() && type != "SECTION" && type != "EOF"; type = nextType()) {
      Entity dropped;
      if (!readRecord(dropped)) return false;
      if (type == "ENDSEC") break;
    }
    s.head.tags = TagList();
    return !r_.failed();
  }
  if (name == "HEADER")
    s.kind = SectionKind::Header;
  else if (name == "TABLES")
    s.kind = SectionKind::Tables;
  else if (name == "BLOCKS")
    s.kind = SectionKind::Blocks;
  else if (name == "ENTITIES")
    s.kind = SectionKind::Entities;
  for (;;) {
    const std::string_view type = nextType();
    if (type == "ENDSEC") {
      // Nothing belongs to ENDSEC; a tag after it is one that lost its record.
      const std::size_t endLine = nextLine();
      if (!readRecord(s.end)) return false;
      if (!s.end.tags.empty()) {
        if (!repairs_)
          return fail(endLine + 2, "group code " + std::to_string(s.end.tags.code(0)) + " stands outside a section");
        keepStrayTags(s.end.tags, 0);
        s.end = makeRecord("ENDSEC");
      }
      return true;
    }
    const bool ended = !r_.peek();
    if (ended || type == "SECTION" || type == "EOF") {
      if (repair("missing ENDSEC added")) {
        s.end = makeRecord("ENDSEC");
        return !r_.failed();
      }
      if (ended) return endedEarly("the section " + std::string(name));
      return fail(nextLine(), "the section " + std::string(name) + " is not closed by ENDSEC");
    }
    bool ok = false;
    Entity dropped;
    switch (s.kind) {
      case SectionKind::Tables:
        if (type == "TABLE")
          ok = readTable(s.tables.emplace_back());
        else if (repairs_ && !isStructural(type) && !type.empty())
          ok = readOrphanTable(s, type);
        else if (repair("records outside a table dropped"))
          ok = readRecord(dropped);
        else
          return fail(nextLine(), std::string(type) + " stands outside a table");
        break;
      case SectionKind::Blocks:
        if (type == "BLOCK") {
          ok = readBlock(s.blocks.emplace_back());
        } else if (repair("entities outside a block dropped")) {
          std::deque<Entity> dropped;
          ok = readEntity(dropped);
        } else {
          return fail(nextLine(), std::string(type) + " stands outside a block");
        }
        break;
      case SectionKind::Entities:
        ok = readEntity(s.records);
        break;
      case SectionKind::Header:
      case SectionKind::Other:
        ok = readRecord(s.records.emplace_back());
        break;
    }
    if (!ok) return false;
  }
}

template <class Reader>
bool DrawingReader<Reader>::read(std::string_view buffer, Drawing& d) {
  while (const RawTag* t = r_.peek()) {
    if (t->code != 999) break;
    r_.advance();
  }
  d.preamble = {buffer.data(), static_cast<std::size_t>(r_.position() - buffer.data())};
  if (r_.skipped() != 0) d.preamble = {};  // what recovery skipped at the start goes, comments with it
  bool sectionFound = false;
  for (;;) {
    const RawTag* t = r_.peek();
    if (!t) {
      if (r_.failed()) return false;
      if (!repair("missing EOF added")) return fail(r_.line(), "the file ends without an EOF record");
      d.eof = makeRecord("EOF");
      break;
    }
    if (t->code != 0) {
      if (!repairs_) return fail(t->line, "group code " + std::to_string(t->code) + " stands outside a section");
      readStrayTags();
      continue;
    }
    const std::string_view type = trimBlanks(t->text);
    if (type == "EOF") {
      const char* start = t->start;
      d.eof.type = "EOF";
      r_.advance();
      // The EOF line ends the drawing; whatever follows is kept as it is, unread.
      d.eof.source = {start, static_cast<std::size_t>(r_.position() - start)};
      d.tail = buffer.substr(static_cast<std::size_t>(r_.position() - buffer.data()));
      break;
    }
    if (type == "SECTION") {
      sectionFound = true;
      if (!readSection(d.sections.emplace_back())) return false;
      if (d.sections.back().name().empty()) d.sections.pop_back();  // a nameless one, dropped in recovery
      continue;
    }
    if (!repairs_) return fail(t->line, std::string(type) + " stands outside a section");
    if (isStructural(type)) {
      repairs_->note("misplaced " + std::string(type) + " records dropped");
      Entity dropped;
      if (!readRecord(dropped)) return false;
      keepStrayTags(dropped.tags, 0);
    } else {
      repairs_->note("entities outside a section moved into the ENTITIES section");
      if (!readEntity(strayEntities_)) return false;
    }
  }
  if (!repairs_) return true;
  // Recovery needs a drawing to start from: a file without a single section is something else.
  if (!sectionFound) return fail(r_.line(), "recovery found no section of a drawing in it");
  finishRepairs(d);
  return true;
}

// Puts what recovery found out of place where it belongs, and merges repeated sections into the first.
template <class Reader>
void DrawingReader<Reader>::finishRepairs(Drawing& d) {
  for (auto first = d.sections.begin(); first != d.sections.end(); ++first) {
    for (auto later = std::next(first); later != d.sections.end();) {
      if (later->name() != first->name()) {
        ++later;
        continue;
      }
      repairs_->note("repeated " + std::string(first->name()) + " sections merged into the first");
      for (std::size_t i = 1; i < later->head.tags.size(); ++i)
        first->head.tags.append(later->head.tags.code(i), later->head.tags.text(i));
      for (Entity& e : later->records) first->records.push_back(std::move(e));
      for (Table& t : later->tables) first->tables.push_back(std::move(t));
      for (Block& b : later->blocks) first->blocks.push_back(std::move(b));
      later = d.sections.erase(later);
    }
  }
  auto find = [&d](SectionKind kind) {
    return std::find_if(d.sections.begin(), d.sections.end(), [kind](const Section& s) { return s.kind == kind; });
  };
  if (!strayHeader_.empty()) {
    auto header = find(SectionKind::Header);
    if (header == d.sections.end()) header = d.sections.insert(d.sections.begin(), makeSection(SectionKind::Header, "HEADER"));
    for (std::size_t i = 0; i < strayHeader_.size(); ++i)
      header->head.tags.append(strayHeader_.code(i), strayHeader_.text(i));
  }
  if (!strayEntities_.empty()) {
    auto entities = find(SectionKind::Entities);
    if (entities == d.sections.end()) {
      auto at = std::find_if(d.sections.begin(), d.sections.end(), [](const Section& s) {
        return s.name() == "OBJECTS" || s.name() == "THUMBNAILIMAGE" || s.name() == "ACDSDATA";
      });
      entities = d.sections.insert(at, makeSection(SectionKind::Entities, "ENTITIES"));
    }
    for (Entity& e : strayEntities_) entities->records.push_back(std::move(e));
  }
}

template <class Reader>
bool readAny(Reader& reader, std::string_view buffer, Drawing& drawing, RepairLog* repairs) {
  return DrawingReader<Reader>(reader, repairs).read(buffer, drawing);
}

}  // namespace

bool readDrawing(TagReader& reader, std::string_view buffer, Drawing& drawing, RepairLog* repairs) {
  const std::size_t lf = buffer.find('\n');
  drawing.style.eol = (lf != std::string_view::npos && lf > 0 && buffer[lf - 1] == '\r') ? "\r\n" : "\n";
  return readAny(reader, buffer, drawing, repairs);
}

bool readDrawing(BinaryTagReader& reader, std::string_view buffer, Drawing& drawing, RepairLog* repairs) {
  drawing.style.binary = reader.codeWidth();
  return readAny(reader, buffer, drawing, repairs);
}

std::string_view repeatedSection(const Drawing& drawing) {
  for (auto first = drawing.sections.begin(); first != drawing.sections.end(); ++first)
    for (auto later = std::next(first); later != drawing.sections.end(); ++later)
      if (later->name() == first->name()) return first->name();
  return {};
}

void writeDrawing(Sink& out, const Drawing& d) {
  const TagStyle& style = d.style;
  out.write(d.preamble);
  for (const Section& s : d.sections) {
    writeEntity(out, s.head, style);
    writeRecords(out, s.records, style);
    for (const Table& t : s.tables) {
      writeEntity(out, t.head, style);
      for (const Entity& e : t.records) writeEntity(out, e, style);
      writeEntity(out, t.end, style);
    }
    for (const Block& b : s.blocks) {
      writeEntity(out, b.begin, style);
      for (const Entity& e : b.entities) writeEntity(out, e, style);
      writeEntity(out, b.end, style);
    }
    writeEntity(out, s.end, style);
  }
  writeEntity(out, d.eof, style);
  out.write(d.tail);
}

}  // namespace dxf
