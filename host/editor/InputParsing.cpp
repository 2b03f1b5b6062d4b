#include "host/editor/InputParsing.h"

#include <charconv>
#include <cmath>
#include <string>

namespace host::editor {

std::wstring_view trimBlanks(std::wstring_view text) {
  while (!text.empty() && (text.front() == L' ' || text.front() == L'\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == L' ' || text.back() == L'\t')) text.remove_suffix(1);
  return text;
}

bool parseReal(std::wstring_view text, double& value) {
  text = trimBlanks(text);
  if (!text.empty() && text.front() == L'+') text.remove_prefix(1);
  if (text.empty()) return false;
  std::string narrow;
  for (wchar_t c : text) {
    // Only the characters of a decimal number; from_chars would take "inf", "nan" and hex as well.
    bool allowed = (c >= L'0' && c <= L'9') || c == L'.' || c == L'-' || c == L'+' || c == L'e' || c == L'E';
    if (!allowed) return false;
    narrow += static_cast<char>(c);
  }
  double parsed = 0.0;
  auto [end, ec] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), parsed);
  if (ec != std::errc() || end != narrow.data() + narrow.size() || !std::isfinite(parsed)) return false;
  value = parsed;
  return true;
}

bool parsePoint(std::wstring_view text, double point[3]) {
  double values[3] = {0.0, 0.0, 0.0};
  int count = 0;
  for (;;) {
    std::size_t comma = text.find(L',');
    if (count == 3 || !parseReal(text.substr(0, comma), values[count])) return false;
    ++count;
    if (comma == std::wstring_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  if (count < 2) return false;
  for (int i = 0; i < 3; ++i) point[i] = values[i];
  return true;
}

}  // namespace host::editor
