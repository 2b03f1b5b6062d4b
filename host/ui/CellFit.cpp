#include "host/ui/CellFit.h"

namespace host::ui {
namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The position of the decimal separator of a plain decimal number, npos when `text` is none.
std::size_t separatorOf(const std::wstring& text) {
  std::size_t i = text.empty() || (text[0] != L'-' && text[0] != L'+') ? 0 : 1;
  const std::size_t digitsFrom = i;
  while (i < text.size() && isDigit(text[i])) ++i;
  if (i == digitsFrom || i >= text.size() || (text[i] != L'.' && text[i] != L',')) return std::wstring::npos;
  const std::size_t separator = i++;
  if (i == text.size()) return std::wstring::npos;
  while (i < text.size() && isDigit(text[i])) ++i;
  return i == text.size() ? separator : std::wstring::npos;
}

// `text` with `decimals` of its decimals left, rounded half up on the written digits.
std::wstring rounded(const std::wstring& text, std::size_t separator, std::size_t decimals) {
  std::wstring out = text.substr(0, separator + (decimals > 0 ? decimals + 1 : 0));
  const std::size_t next = separator + decimals + 1;
  if (next >= text.size() || text[next] < L'5') return out;
  // Carry from the last kept digit towards the front, past the separator; 9.99 becomes 10.0.
  for (std::size_t i = out.size(); i-- > 0;) {
    if (out[i] == L'.' || out[i] == L',') continue;
    if (!isDigit(out[i])) {  // the sign
      out.insert(i + 1, 1, L'1');
      return out;
    }
    if (out[i] != L'9') {
      ++out[i];
      return out;
    }
    out[i] = L'0';
  }
  out.insert(0, 1, L'1');
  return out;
}

}  // namespace

std::wstring fitDecimals(const std::wstring& text, int room, const std::function<int(const std::wstring&)>& widthOf) {
  const std::size_t separator = separatorOf(text);
  if (separator == std::wstring::npos || widthOf(text) <= room) return text;
  std::size_t decimals = text.size() - separator - 1;
  while (decimals > 0) {
    --decimals;
    std::wstring shorter = rounded(text, separator, decimals);
    if (decimals == 0 || widthOf(shorter) <= room) return shorter;
  }
  return rounded(text, separator, 0);
}

}  // namespace host::ui
