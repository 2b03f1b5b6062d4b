// The section layer of the DXF store: a drawing file as its sections in file order, each kept whole.
// HEADER keeps its variables as the tags of the SECTION record; TABLES is split into tables, BLOCKS into
// block definitions, ENTITIES into entities with their VERTEX/ATTRIB/SEQEND children; every other section
// (CLASSES, OBJECTS, THUMBNAILIMAGE, ACDSDATA, anything unknown) is a plain run of records.
#pragma once

#include "host/dxf/BinaryTags.h"
#include "host/dxf/Entity.h"
#include "host/dxf/EntityWriter.h"
#include "host/dxf/RepairLog.h"
#include "host/dxf/TagReader.h"
#include "host/dxf/Tables.h"

#include <deque>
#include <list>
#include <optional>
#include <string>
#include <string_view>

namespace dxf {

enum class SectionKind { Header, Tables, Blocks, Entities, Other };

// One block definition: BLOCK, its entities, ENDBLK.
struct Block {
  Entity begin;                 // type "BLOCK"
  std::deque<Entity> entities;  // a deque so that entities keep their address when one is added
  Entity end;                   // type "ENDBLK"
};

struct Section {
  SectionKind kind = SectionKind::Other;
  Entity head;                 // 0 SECTION with its 2 name tag and whatever stands before the first record
                               // (all of the header's variables, a thumbnail's data)
  std::deque<Entity> records;  // ENTITIES and the plain sections
  std::deque<Table> tables;    // TABLES
  std::deque<Block> blocks;    // BLOCKS
  Entity end;                  // type "ENDSEC"

  std::string_view name() const;
};

// A drawing file: comments before the first section, the sections, the EOF record and whatever follows it.
struct Drawing {
  std::string_view preamble;  // a byte order mark and 999 comment tags before the first section
  std::list<Section> sections;
  Entity eof;
  std::string_view tail;  // bytes after the EOF line
  TagStyle style;         // how the file spells tags, for the records the program writes
};

// Reads the whole drawing; on failure the reader carries the message with its line number (byte offset
// in a binary file). With `repairs` the reader recovers a damaged drawing instead of failing: it closes
// what the file leaves open (sections, tables, blocks, polylines, the file itself), gives table entries
// without their table a table, moves header variables and entities found outside a section where they
// belong, merges repeated sections into the first, drops what has no place, and notes each repair.
bool readDrawing(TagReader& reader, std::string_view buffer, Drawing& drawing, RepairLog* repairs = nullptr);
bool readDrawing(BinaryTagReader& reader, std::string_view buffer, Drawing& drawing, RepairLog* repairs = nullptr);

// The name of the first section that a drawing holds twice; empty when there is none. A reader that
// knows no recovery sees only the first of them, so such a file is damaged.
std::string_view repeatedSection(const Drawing& drawing);

void writeDrawing(Sink& out, const Drawing& drawing);

// A structural record that the program makes: "0 ENDSEC", "0 SECTION / 2 HEADER".
Entity makeRecord(std::string_view type);
// An empty section the program adds to a drawing that lacks it.
Section makeSection(SectionKind kind, std::string_view name);

// Header variables: the index of the variable's 9 tag in the HEADER section's tags.
std::optional<std::size_t> findHeaderVariable(const TagList& header, std::string_view name);

}  // namespace dxf
