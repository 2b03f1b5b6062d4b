// The running point names of the capture dialog: P1, P2, ... or 009, 010, ...
#include <algorithm>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <locale.h>
#include <wctype.h>

#include "capture/CDlgPickPoints.h"

namespace {

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

// Letters as the module's home runtime classifies wide characters: by Unicode, whatever the process locale
// (so "Pü1" splits after the ü, not after the P).
// The classification locale lives as long as the module and is handed back when the module is unloaded.
class UnicodeLocale {
 public:
  UnicodeLocale() : locale_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr))) {}
  ~UnicodeLocale() {
    if (locale_ != static_cast<locale_t>(nullptr)) ::freelocale(locale_);
  }
  UnicodeLocale(const UnicodeLocale&) = delete;
  UnicodeLocale& operator=(const UnicodeLocale&) = delete;
  locale_t get() const { return locale_; }

 private:
  locale_t locale_;
};

bool isLetter(wchar_t c) {
  static const UnicodeLocale unicode;
  if (unicode.get() != static_cast<locale_t>(nullptr)) return ::iswalpha_l(static_cast<std::wint_t>(c), unicode.get()) != 0;
  return std::iswalpha(static_cast<std::wint_t>(c)) != 0;
}

// The value of the digits as the runtime reads an integer: blanks, an optional sign, then digits up to the
// first other character; nothing readable is 0. Values beyond the integer range stay at its end.
long long readInteger(const std::wstring& digits) {
  std::size_t i = 0;
  while (i < digits.size() && isBlank(digits[i])) ++i;
  bool negative = false;
  if (i < digits.size() && (digits[i] == L'+' || digits[i] == L'-')) negative = digits[i++] == L'-';
  long long value = 0;
  for (; i < digits.size() && digits[i] >= L'0' && digits[i] <= L'9'; ++i) {
    value = value * 10 + (digits[i] - L'0');
    if (value > INT_MAX) value = static_cast<long long>(INT_MAX) + 1;
  }
  value = negative ? -value : value;
  if (value > INT_MAX) value = INT_MAX;
  if (value < INT_MIN) value = INT_MIN;
  return value;
}

std::wstring stepNumber(const std::wstring& number, int step) {
  std::wstring prefix;
  std::wstring digits;
  CDlgPickPoints::SplitNumber(number, prefix, digits);
  long long value = readInteger(digits) + step;
  if (step < 0 && value < 0) value = 0;
  if (value > INT_MAX) value = INT_MAX;
  wchar_t buffer[64];
  // The old digits' width is kept with leading zeros; a longer number simply grows.
  std::swprintf(buffer, 64, L"%0*d", static_cast<int>(std::min<std::size_t>(digits.size(), 32)),
                static_cast<int>(value));
  return prefix + buffer;
}

}  // namespace

void CDlgPickPoints::SplitNumber(const std::wstring& number, std::wstring& prefix, std::wstring& digits) {
  std::size_t first = 0;
  std::size_t last = number.size();
  while (first < last && isBlank(number[first])) ++first;
  while (last > first && isBlank(number[last - 1])) --last;
  const std::wstring trimmed = number.substr(first, last - first);
  std::size_t split = trimmed.size();
  while (split > 0 && !isLetter(trimmed[split - 1])) --split;
  prefix = trimmed.substr(0, split);
  digits = trimmed.substr(split);
}

std::wstring CDlgPickPoints::AdvanceNumber(const std::wstring& number) { return stepNumber(number, +1); }

std::wstring CDlgPickPoints::StepBackNumber(const std::wstring& number) { return stepNumber(number, -1); }
