#include "host/dxf/Utf8.h"

namespace dxf {

void appendUtf8(std::string& out, char32_t c) {
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = kUtf8Replacement;
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// One character of UTF-8 at `i`, which moves past it; a broken sequence gives U+FFFD and moves one byte.
char32_t nextUtf8(std::string_view s, std::size_t& i) {
  const auto b = static_cast<unsigned char>(s[i]);
  int extra = 0;
  char32_t c = 0;
  if (b < 0x80) {
    ++i;
    return b;
  } else if ((b & 0xE0) == 0xC0) {
    extra = 1;
    c = b & 0x1F;
  } else if ((b & 0xF0) == 0xE0) {
    extra = 2;
    c = b & 0x0F;
  } else if ((b & 0xF8) == 0xF0) {
    extra = 3;
    c = b & 0x07;
  } else {
    ++i;
    return kUtf8Replacement;
  }
  if (i + static_cast<std::size_t>(extra) >= s.size()) {
    ++i;
    return kUtf8Replacement;
  }
  for (int k = 1; k <= extra; ++k) {
    const auto cb = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
    if ((cb & 0xC0) != 0x80) {
      ++i;
      return kUtf8Replacement;
    }
    c = (c << 6) | (cb & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (c < kSmallest[extra] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
    ++i;
    return kUtf8Replacement;
  }
  i += static_cast<std::size_t>(extra) + 1;
  return c;
}

}  // namespace dxf
