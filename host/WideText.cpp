#include "host/WideText.h"

#include "host/dxf/Utf8.h"

namespace host {

std::string toUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (wchar_t wc : text) dxf::appendUtf8(out, static_cast<char32_t>(wc));
  return out;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) out += static_cast<wchar_t>(dxf::nextUtf8(text, i));
  return out;
}

wchar_t foldCase(wchar_t c) {
  if (c >= L'A' && c <= L'Z') return static_cast<wchar_t>(c + 32);
  // Latin-1 capitals À..Þ except the multiplication sign.
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<wchar_t>(c + 32);
  return c;
}

bool equalsNoCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (foldCase(a[i]) != foldCase(b[i])) return false;
  return true;
}

std::string escapeLineBreaks(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (char c : utf8) {
    if (c == '\n')
      out += "\\n";
    else if (c == '\r')
      out += "\\r";
    else
      out += c;
  }
  return out;
}

}  // namespace host
