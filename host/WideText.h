// Text helpers of the host: the host interface is wide (UTF-32 wchar_t here), files and the transcript
// are UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

std::string toUtf8(std::wstring_view text);
// Malformed UTF-8 becomes U+FFFD, so that a damaged script or drawing never stops a conversion.
std::wstring fromUtf8(std::string_view text);

// Case-insensitive comparison for command names and keywords: ASCII and the Latin-1 letters that German
// and French names use.
wchar_t foldCase(wchar_t c);
bool equalsNoCase(std::wstring_view a, std::wstring_view b);

// Writes line breaks inside a text as the two characters \n (and \r), so that one message stays one
// transcript line.
std::string escapeLineBreaks(std::string_view utf8);

}  // namespace host
