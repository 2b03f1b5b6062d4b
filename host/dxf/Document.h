// A DXF drawing held losslessly: the top layer of the DXF store, over sections, tables, blocks and entities.
//
// The whole file is kept in one buffer; every record refers to its own bytes there. Saving writes each
// untouched record back byte for byte and only the records the program changed (or added) anew, so a drawing
// that is loaded and saved without a change comes out identical, line endings and number spellings included.
//
// Accepted: ASCII and binary DXF from R2.5 (AC1002) to R2018 (AC1032), LF or CRLF line endings; every
// drawing is written back in its own form and version. Refused with a message: DWG, empty files,
// directories, other versions, anything that is not DXF, and malformed DXF (the message names the line,
// or the byte offset in a binary file). recover() opens what can be repaired of a damaged drawing. Limits: a line may hold at most kMaxLineLength bytes, a file at most
// kMaxFileSize bytes.
//
// Text: the store keeps raw file bytes. Before R2007 they are in the code page of $DWGCODEPAGE, with
// characters outside it written as \U+XXXX; from R2007 they are UTF-8. Every call below that takes or
// returns a name or text as std::string speaks UTF-8; calls named raw... speak the file's own bytes.
#pragma once

#include "host/dxf/ChangeJournal.h"
#include "host/dxf/Entity.h"
#include "host/dxf/Tables.h"
#include "host/dxf/TagReader.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

class FileBytes;

// The versions read and written, oldest first; the file names them in $ACADVER. R10 stands for every
// version before R12 (AC1002 to AC1006): their files have the R12 layout with fewer tables and variables.
enum class Version { R10, R12, R13, R14, R2000, R2004, R2007, R2010, R2013, R2018 };

// A block definition of the BLOCKS section.
struct BlockInfo {
  std::string name;         // UTF-8
  std::string_view handle;  // handle of the BLOCK entity (empty in files without handles)
  bool isLayout = false;    // *Model_Space, *Paper_Space, *Paper_Space0... (and R12's $MODEL_SPACE/$PAPER_SPACE)
};

class Document {
 public:
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // Reads a drawing. On failure returns null and sets `error` to a message that names the file and,
  // for malformed content, the line ("plan.dxf: line 17: group code \"1x\" is not a number").
  // With `repairs` a damaged drawing is recovered instead (see recover()).
  static std::unique_ptr<Document> load(const std::filesystem::path& path, std::string& error,
                                        std::vector<std::string>* repairs = nullptr);

  // The same from bytes in memory; `name` stands for the file in messages.
  static std::unique_ptr<Document> parse(std::string bytes, std::string_view name, std::string& error,
                                         std::vector<std::string>* repairs = nullptr);

  // Opens a damaged drawing as far as it can be repaired: lines and tags that cannot be read are skipped,
  // what the file leaves open is closed, misplaced records and variables are moved where they belong or
  // dropped, repeated sections merged, and records with an empty, unreadable or duplicate handle get a
  // fresh one. `repairs` gets one line per kind of repair with its count ("missing ENDSEC added: 1"),
  // empty when the drawing needed none. The file itself is left as it is. Fails (with `error`) where no
  // drawing can be found in the file at all.
  static std::unique_ptr<Document> recover(const std::filesystem::path& path, std::string& error,
                                           std::vector<std::string>& repairs) {
    return load(path, error, &repairs);
  }

  // Writes the drawing atomically: a temporary file beside `path`, flushed to disk, then renamed over it.
  // On failure returns false with `error` set; `path` is then untouched and no temporary is left behind.
  bool save(const std::filesystem::path& path, std::string& error) const;

  // The drawing as it would be saved.
  std::string bytes() const;

  Version version() const { return version_; }
  bool isBinary() const;  // read from (and saved as) binary DXF
  std::string_view versionCode() const;  // "AC1002" ... "AC1032"
  bool hasHandles() const;  // R13 and later always; older versions with $HANDSEED and $HANDLING on

  // Text conversion in this drawing's encoding (see the top of this file).
  std::string decode(std::string_view raw) const;
  std::string encode(std::string_view utf8) const;

  // Header variables, e.g. "$CLAYER", "$HANDSEED". The raw text of the variable's first value, or nothing
  // when the header lacks it.
  std::optional<std::string_view> rawHeader(std::string_view name) const;
  // Sets the variable's first value (adding the variable with that group code at the end of the header
  // when it is missing; replacing its values when they have another group code). The text is raw; use
  // encode() for names.
  void setRawHeader(std::string_view name, int code, std::string_view text);
  // Convenience for text variables such as $CLAYER: UTF-8 in and out.
  std::optional<std::string> headerText(std::string_view name) const;
  void setHeaderText(std::string_view name, std::string_view utf8, int code = 8);

  // Layers, in file order. References stay valid while the document lives.
  std::size_t layerCount() const;
  LayerRecord layer(std::size_t i) const;
  std::string layerName(const LayerRecord& layer) const;  // UTF-8
  // Looks a layer up by name, ignoring case (of ASCII letters, as the CAD host does).
  std::optional<LayerRecord> findLayer(std::string_view utf8Name) const;
  // Adds a layer record (not frozen, not locked, on) with a fresh handle, the LAYER table as owner and the
  // subclass markers the version needs. The linetype must exist or be empty (then CONTINUOUS). A drawing
  // without a LAYER table gets one, with the layer "0" that every drawing has.
  // Returns nothing (with `error` set) when the name is empty, taken or the linetype unknown.
  std::optional<LayerRecord> addLayer(std::string_view utf8Name, int color, std::string_view utf8Linetype,
                                      std::string& error);

  // Linetypes, looked up by name ignoring case.
  std::optional<LinetypeRecord> findLinetype(std::string_view utf8Name) const;
  // CONTINUOUS, the linetype every drawing has: CAD programs offer it even when a file (often an R12 one)
  // leaves its record out, and a layer without a linetype of its own draws with it. Adds the record (and
  // the LTYPE table and the TABLES section where the file has none) the first time it is asked for.
  LinetypeRecord ensureContinuousLinetype();

  // The block definitions of the BLOCKS section, in file order.
  std::vector<BlockInfo> blocks() const;

  // The entities of the block definition with this raw name (the file's own bytes, compared ignoring ASCII
  // case), or null when the drawing has no such block. The entities keep their addresses.
  std::deque<Entity>* blockEntities(std::string_view rawName);
  // How many entities of the drawing (in any space or block) name this block with their group 2: block
  // references, dimensions, tables. Counted once and kept until an entity is appended.
  std::size_t blockReferences(std::string_view rawName) const;

  // Model space: the entities of the ENTITIES section that are not in paper space (group 67 = 1, or in
  // R13+ an owner that is a paper-space block record), in file order, erased ones left out. A POLYLINE or
  // INSERT carries its VERTEX/ATTRIB/SEQEND records as children. The pointers stay valid (and keep
  // pointing at the same entity) while the document lives; they identify the entity.
  std::vector<Entity*> modelSpace() const;
  // The paper-space entities of the ENTITIES section, kept apart from model space.
  std::vector<Entity*> paperSpace() const;

  // The entity's handle (group 5), empty when it has none.
  static std::string_view handleOf(const Entity& entity);
  // The entity's layer name (group 8) in UTF-8; "0" when it has none.
  std::string layerOf(const Entity& entity) const;

  // Appends an entity to model space. `tags` are written as for R2000: the common entity data (8 layer,
  // 62 colour, ...) first, then the type's subclass markers (100 AcDbLine ...) and data. The document puts
  // a fresh handle from $HANDSEED (and advances $HANDSEED), the model-space owner and the AcDbEntity marker
  // in front where the version has them, and drops subclass markers in R12.
  Entity& appendToModelSpace(std::string_view type, TagList tags);

  // Marks an entity as erased: it disappears from modelSpace()/paperSpace() and is not written on save.
  // The pointer itself stays valid.
  void erase(Entity& entity);

  // Hands out the next handle from $HANDSEED (hex, upper case) and advances $HANDSEED.
  std::string newHandle();

  // The steps of work on this drawing, for taking back a failed command and for undo. The calls above
  // record their own changes; whoever changes a record's tags in place (transforming an entity, setting
  // its layer) calls journal().recordChange(record) first.
  ChangeJournal& journal();

 private:
  Document();
  static std::unique_ptr<Document> parseBytes(FileBytes bytes, std::string_view name, std::string& error,
                                              std::vector<std::string>* repairs);
  // The named table (LTYPE or LAYER), added empty with its TABLES section where the file has none.
  Table& ensureTable(std::string_view name);
  void repairHandles(RepairLog& repairs);

  struct Impl;
  std::unique_ptr<Impl> impl_;
  Version version_ = Version::R12;
};

}  // namespace dxf
