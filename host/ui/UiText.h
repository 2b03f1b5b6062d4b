// UTF-8 to and from the wide strings of the dialog framework (wchar_t holds a whole code point here).
#pragma once

#include <string>
#include <string_view>

namespace host::ui {

std::string toUtf8(std::wstring_view text);
// Invalid bytes become U+FFFD.
std::wstring fromUtf8(std::string_view text);

}  // namespace host::ui
