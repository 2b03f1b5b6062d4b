#include "host/dxf/Sections.h"

#include <vector>

namespace dxf {

std::string_view Section::name() const { return trimBlanks(head.value(2)); }

Entity makeRecord(std::string_view type) {
  Entity e;
  e.type = std::string(type);
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

class DrawingReader {
 public:
  explicit DrawingReader(TagReader& reader) : r_(reader) {}

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

  bool readRecord(Entity& e);
  bool readSection(Section& s);
  bool readTable(Table& t);
  bool readBlock(Block& b);
  bool readEntity(std::deque<Entity>& into);

  TagReader& r_;
  std::vector<RawTag> scratch_;
};

bool DrawingReader::readRecord(Entity& e) {
  const RawTag* t = r_.peek();
  const char* start = t->start;
  e.type = std::string(trimBlanks(t->text));
  r_.advance();
  // Collected first so that the record's tag list is allocated once at its exact size.
  scratch_.clear();
  while ((t = r_.peek()) && t->code != 0) {
    scratch_.push_back(*t);
    r_.advance();
  }
  if (r_.failed()) return false;
  e.tags.reserve(scratch_.size());
  for (const RawTag& s : scratch_) e.tags.appendRaw(s.code, s.codeText, s.text);
  e.source = {start, static_cast<std::size_t>(r_.position() - start)};
  return true;
}

bool DrawingReader::readEntity(std::deque<Entity>& into) {
  const std::string_view type = nextType();
  if (type == "VERTEX" || type == "ATTRIB" || type == "SEQEND")
    return fail(nextLine(), std::string(type) + " stands outside a POLYLINE or INSERT");
  const char* start = r_.peek()->start;
  Entity& e = into.emplace_back();
  if (!readRecord(e)) return false;
  if (e.type == "POLYLINE") {
    while (nextType() == "VERTEX")
      if (!readRecord(e.children.emplace_back())) return false;
    if (nextType() != "SEQEND") {
      if (!r_.peek()) return endedEarly("a POLYLINE");
      return fail(nextLine(), "a POLYLINE is not closed by SEQEND");
    }
    if (!readRecord(e.children.emplace_back())) return false;
  } else if (e.type == "INSERT") {
    while (nextType() == "ATTRIB")
      if (!readRecord(e.children.emplace_back())) return false;
    const bool attributesFollow = parseInteger(e.value(66, "0")).value_or(0) == 1;
    if (nextType() == "SEQEND" && (attributesFollow || !e.children.empty())) {
      if (!readRecord(e.children.emplace_back())) return false;
    } else if (!e.children.empty()) {
      if (!r_.peek()) return endedEarly("an INSERT");
      return fail(nextLine(), "the attributes of an INSERT are not closed by SEQEND");
    }
  }
  e.source = {start, static_cast<std::size_t>(r_.position() - start)};
  return true;
}

bool DrawingReader::readTable(Table& t) {
  if (!readRecord(t.head)) return false;
  for (;;) {
    const std::string_view type = nextType();
    if (type == "ENDTAB") return readRecord(t.end);
    if (!r_.peek()) return endedEarly("a table");
    if (type == "TABLE" || type == "ENDSEC" || type == "SECTION" || type == "EOF")
      return fail(nextLine(), "the table " + std::string(t.name()) + " is not closed by ENDTAB");
    if (!readRecord(t.records.emplace_back())) return false;
  }
}

bool DrawingReader::readBlock(Block& b) {
  if (!readRecord(b.begin)) return false;
  for (;;) {
    const std::string_view type = nextType();
    if (type == "ENDBLK") return readRecord(b.end);
    if (!r_.peek()) return endedEarly("a block");
    if (type == "BLOCK" || type == "ENDSEC" || type == "SECTION" || type == "EOF")
      return fail(nextLine(), "the block " + std::string(b.begin.value(2)) + " is not closed by ENDBLK");
    if (!readEntity(b.entities)) return false;
  }
}

bool DrawingReader::readSection(Section& s) {
  const std::size_t line = nextLine();
  if (!readRecord(s.head)) return false;
  const std::string_view name = s.name();
  if (s.head.tags.empty() || s.head.tags.code(0) != 2 || name.empty())
    return fail(line, "the SECTION has no name");
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
      if (!s.end.tags.empty())
        return fail(endLine + 2, "group code " + std::to_string(s.end.tags.code(0)) + " stands outside a section");
      return true;
    }
    if (!r_.peek()) return endedEarly("the section " + std::string(name));
    if (type == "SECTION" || type == "EOF")
      return fail(nextLine(), "the section " + std::string(name) + " is not closed by ENDSEC");
    bool ok = false;
    switch (s.kind) {
      case SectionKind::Tables:
        if (type != "TABLE") return fail(nextLine(), std::string(type) + " stands outside a table");
        ok = readTable(s.tables.emplace_back());
        break;
      case SectionKind::Blocks:
        if (type != "BLOCK") return fail(nextLine(), std::string(type) + " stands outside a block");
        ok = readBlock(s.blocks.emplace_back());
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

bool DrawingReader::read(std::string_view buffer, Drawing& d) {
  const std::size_t lf = buffer.find('\n');
  d.eol = (lf != std::string_view::npos && lf > 0 && buffer[lf - 1] == '\r') ? "\r\n" : "\n";
  while (const RawTag* t = r_.peek()) {
    if (t->code != 999) break;
    r_.advance();
  }
  d.preamble = {buffer.data(), static_cast<std::size_t>(r_.position() - buffer.data())};
  for (;;) {
    const RawTag* t = r_.peek();
    if (!t) {
      if (!r_.failed()) r_.fail(r_.line(), "the file ends without an EOF record");
      return false;
    }
    if (t->code != 0)
      return fail(t->line, "group code " + std::to_string(t->code) + " stands outside a section");
    const std::string_view type = trimBlanks(t->text);
    if (type == "EOF") {
      const char* start = t->start;
      d.eof.type = "EOF";
      r_.advance();
      // The EOF line ends the drawing; whatever follows is kept as it is, unread.
      d.eof.source = {start, static_cast<std::size_t>(r_.position() - start)};
      d.tail = buffer.substr(static_cast<std::size_t>(r_.position() - buffer.data()));
      return true;
    }
    if (type != "SECTION") return fail(t->line, std::string(type) + " stands outside a section");
    if (!readSection(d.sections.emplace_back())) return false;
  }
}

}  // namespace

bool readDrawing(TagReader& reader, std::string_view buffer, Drawing& drawing) {
  return DrawingReader(reader).read(buffer, drawing);
}

void writeDrawing(Sink& out, const Drawing& d) {
  out.write(d.preamble);
  for (const Section& s : d.sections) {
    writeEntity(out, s.head, d.eol);
    for (const Entity& e : s.records) writeEntity(out, e, d.eol);
    for (const Table& t : s.tables) {
      writeEntity(out, t.head, d.eol);
      for (const Entity& e : t.records) writeEntity(out, e, d.eol);
      writeEntity(out, t.end, d.eol);
    }
    for (const Block& b : s.blocks) {
      writeEntity(out, b.begin, d.eol);
      for (const Entity& e : b.entities) writeEntity(out, e, d.eol);
      writeEntity(out, b.end, d.eol);
    }
    writeEntity(out, s.end, d.eol);
  }
  writeEntity(out, d.eof, d.eol);
  out.write(d.tail);
}

}  // namespace dxf
