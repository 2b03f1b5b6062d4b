// Binary DXF: the same tags as the text form, written as the sentinel "AutoCAD Binary DXF\r\n\x1a\0" and
// then, tag by tag, the group code and the value in the form its code calls for: texts and handles ending
// in a NUL byte, reals as 8-byte doubles, integers in 1, 2, 4 or 8 bytes, binary data as a length byte and
// the bytes (all little-endian). Group codes take one byte in files before R13 (255 announcing a two-byte
// code for the codes above 254), two bytes from R13 on.
//
// Below the entity layer a binary file becomes the same tags as a text file: each value is spelled as the
// text form spells it (a real as the shortest text that reads back to the same double, binary data as hex
// digits), so every layer above works unchanged. Writing spells each tag back into the binary form; for a
// value read from a file this gives its bytes exactly.
#pragma once

#include "host/dxf/RepairLog.h"
#include "host/dxf/TagReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

inline constexpr std::string_view kBinarySentinel{"AutoCAD Binary DXF\r\n\x1a\0", 22};

inline bool isBinaryDxf(std::string_view bytes) { return bytes.substr(0, kBinarySentinel.size()) == kBinarySentinel; }

// How a binary file writes its group codes.
enum class CodeWidth { OneByte, TwoBytes };

// Reads the tags of a binary file. The values' texts are kept in `texts`, which must outlive every tag
// list made from them; `start` and position() point into the file, so that a record's source is its
// binary bytes. Where a text reader names a line, this one names the byte offset of the tag.
class BinaryTagReader {
 public:
  // With `repairs` a damaged tail (a cut-off or unreadable tag) ends the tags quietly and is noted.
  BinaryTagReader(std::string_view file, std::string& texts, RepairLog* repairs = nullptr);

  CodeWidth codeWidth() const { return width_; }

  const RawTag* peek();
  void advance();
  bool failed() const { return !error_.empty(); }
  const std::string& error() const { return error_; }
  const char* position() const;
  std::size_t line() const;
  void fail(std::size_t offset, std::string_view message);
  // Recovery skips nothing inside a binary file: its damage ends it.
  std::size_t skipped() const { return 0; }

 private:
  struct Decoded {
    int code;
    std::uint32_t textOffset;
    std::uint32_t textLength;
    std::uint32_t fileOffset;
  };
  void decodeAll(std::string& texts, RepairLog* repairs);

  std::string_view file_;
  std::string_view texts_;
  CodeWidth width_ = CodeWidth::TwoBytes;
  std::vector<Decoded> tags_;
  std::size_t end_ = 0;  // the file offset after the last decoded tag
  std::size_t next_ = 0;
  RawTag current_;
  bool ready_ = false;
  std::string error_;
  std::string pending_;  // the damage that ends the tags, reported when reading gets there
};

// Appends the binary form of one tag.
void appendBinaryTag(std::string& out, int code, std::string_view text, CodeWidth width);

}  // namespace dxf
