// Character tables of single-byte Windows code pages.
#pragma once

#include <cstdint>

namespace dxf {

// The Unicode characters of bytes 128..255 in Windows code page `number` (874, 1250 ... 1258), 0 where
// the code page leaves a byte undefined; null for code pages not tabled.
const std::uint16_t* codePageTable(int number);

}  // namespace dxf
