#include "host/dxf/Codec.h"

#include "host/dxf/CodePages.h"
#include "host/dxf/Utf8.h"

#include <cctype>
#include <charconv>

namespace dxf {

namespace {

// "\U+XXXX" at `i`: the character, or nothing when the text there is no such escape.
bool unicodeEscape(std::string_view s, std::size_t i, char32_t& c) {
  if (i + 7 > s.size() || s[i] != '\\' || (s[i + 1] != 'U' && s[i + 1] != 'u') || s[i + 2] != '+') return false;
  unsigned value = 0;
  const char* first = s.data() + i + 3;
  auto [end, ec] = std::from_chars(first, first + 4, value, 16);
  if (ec != std::errc() || end != first + 4) return false;
  // A lone surrogate is no character; it shows as the replacement character.
  c = (value >= 0xD800 && value <= 0xDFFF) ? kUtf8Replacement : value;
  return true;
}

void appendEscape(std::string& out, char32_t c) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  out += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4) out += kHex[(c >> shift) & 0xF];
}

}  // namespace

Codec Codec::codePage(std::string_view dwgCodePage) {
  // "ANSI_1252", case as the writer liked it.
  std::size_t digits = dwgCodePage.size();
  while (digits > 0 && std::isdigit(static_cast<unsigned char>(dwgCodePage[digits - 1]))) --digits;
  int number = 0;
  std::from_chars(dwgCodePage.data() + digits, dwgCodePage.data() + dwgCodePage.size(), number);
  const std::uint16_t* table = codePageTable(number);
  return Codec(table ? table : codePageTable(1252));
}

std::string Codec::decode(std::string_view raw) const {
  std::string out;
  out.reserve(raw.size());
  std::size_t i = 0;
  while (i < raw.size()) {
    char32_t c = 0;
    if (raw[i] == '\\' && unicodeEscape(raw, i, c)) {
      appendUtf8(out, c);
      i += 7;
    } else if (table_ == nullptr) {
      appendUtf8(out, nextUtf8(raw, i));
    } else {
      const auto b = static_cast<unsigned char>(raw[i++]);
      // Bytes a code page leaves undefined pass as the control character of the same number.
      appendUtf8(out, b < 0x80 ? b : (table_[b - 0x80] ? table_[b - 0x80] : b));
    }
  }
  return out;
}

std::string Codec::encode(std::string_view utf8) const {
  std::string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    const char32_t c = nextUtf8(utf8, i);
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (table_ == nullptr) {
      appendUtf8(out, c);
    } else {
      bool found = false;
      for (int k = 0; k < 128 && !found; ++k) {
        if (table_[k] == c) {
          out += static_cast<char>(0x80 + k);
          found = true;
        }
      }
      if (!found) {
        if (c <= 0xFFFF)
          appendEscape(out, c);
        else
          out += '?';
      }
    }
  }
  return out;
}

}  // namespace dxf
