// Text encoding of a DXF file. Before R2007 texts are single bytes in the drawing's code page
// ($DWGCODEPAGE, e.g. "ANSI_1252"), and characters outside it are written as \U+XXXX; from R2007 texts
// are UTF-8. The store keeps raw bytes; this converts names and texts at the edge.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dxf {

class Codec {
 public:
  // UTF-8 texts (R2007 and later).
  static Codec utf8() { return Codec(nullptr); }
  // The single-byte Windows code page named as in $DWGCODEPAGE ("ANSI_1250" ... "ANSI_1258", "ANSI_874").
  // Other code pages are read as ANSI_1252: the bytes in the store stay as they are in any case, only the
  // characters shown for bytes above 127 may then be wrong.
  static Codec codePage(std::string_view dwgCodePage);

  bool isUtf8() const { return table_ == nullptr; }

  // Raw file text to UTF-8, with \U+XXXX escapes replaced by their characters.
  std::string decode(std::string_view raw) const;
  // UTF-8 to raw file text; in a code page, a character it lacks becomes \U+XXXX (or "?" outside the
  // basic multilingual plane, which the escape cannot reach).
  std::string encode(std::string_view utf8) const;

 private:
  explicit Codec(const std::uint16_t* table) : table_(table) {}
  const std::uint16_t* table_;  // the characters of bytes 128..255; 0 where the code page has none
};

}  // namespace dxf
