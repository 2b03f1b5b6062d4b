// UTF-8 one character at a time: shared by the store's code-page conversion and the host's wide text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dxf {

inline constexpr char32_t kUtf8Replacement = 0xFFFD;

// Appends the UTF-8 form of `c`; anything that is no Unicode scalar value becomes U+FFFD.
void appendUtf8(std::string& out, char32_t c);

// The character at `i`, which moves past it. A broken, overlong or surrogate sequence gives U+FFFD and
// moves one byte, so that a damaged file never stops a conversion.
char32_t nextUtf8(std::string_view s, std::size_t& i);

}  // namespace dxf
