#include "host/editor/WideFormat.h"

#include <locale.h>

#include <cwchar>
#include <vector>

namespace host::editor {
namespace {

bool isFlag(wchar_t c) { return c == L'-' || c == L'+' || c == L' ' || c == L'#' || c == L'0' || c == L'\''; }
bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Narrow string arguments are UTF-8 here, whatever locale the process runs in; the conversion uses a
// locale of the calling thread only, so the rest of the process keeps its own.
class Utf8CharacterType {
 public:
  Utf8CharacterType() {
    static locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    if (utf8) previous_ = uselocale(utf8);
  }
  ~Utf8CharacterType() {
    if (previous_) uselocale(previous_);
  }
  Utf8CharacterType(const Utf8CharacterType&) = delete;
  Utf8CharacterType& operator=(const Utf8CharacterType&) = delete;

 private:
  locale_t previous_ = nullptr;
};

}  // namespace

std::wstring toPortableFormat(std::wstring_view f) {
  std::wstring out;
  out.reserve(f.size() + 8);
  std::size_t i = 0;
  while (i < f.size()) {
    if (f[i] != L'%') {
      out += f[i++];
      continue;
    }
    out += f[i++];
    if (i < f.size() && f[i] == L'%') {
      out += f[i++];
      continue;
    }
    while (i < f.size() && isFlag(f[i])) out += f[i++];
    while (i < f.size() && (isDigit(f[i]) || f[i] == L'*')) out += f[i++];
    if (i < f.size() && f[i] == L'.') {
      out += f[i++];
      while (i < f.size() && (isDigit(f[i]) || f[i] == L'*')) out += f[i++];
    }
    // Length modifiers, the home platform's I64/I32/I included.
    std::wstring length;
    for (;;) {
      if (f.substr(i, 3) == L"I64") {
        length += L"ll";
        i += 3;
      } else if (f.substr(i, 3) == L"I32") {
        i += 3;
      } else if (i < f.size() && f[i] == L'I') {
        length += L"z";
        ++i;
      } else if (i < f.size() && (f[i] == L'h' || f[i] == L'l' || f[i] == L'L' || f[i] == L'z' ||
                                  f[i] == L'j' || f[i] == L't' || f[i] == L'w')) {
        length += f[i] == L'w' ? L'l' : f[i];
        ++i;
      } else {
        break;
      }
    }
    if (i >= f.size()) {
      out += length;
      break;
    }
    wchar_t conversion = f[i++];
    if (conversion == L's' || conversion == L'c') {
      // Plain and l mean wide; h means narrow.
      out += (length == L"h" ? L"" : L"l");
      out += conversion;
    } else if (conversion == L'S' || conversion == L'C') {
      out += (length == L"l" ? L"l" : L"");
      out += static_cast<wchar_t>(conversion == L'S' ? L's' : L'c');
    } else {
      out += length;
      out += conversion;
    }
  }
  return out;
}

std::wstring formatWide(const wchar_t* format, va_list args) {
  if (!format) return {};
  std::wstring portable = toPortableFormat(format);
  Utf8CharacterType utf8;
  // vswprintf answers -1 both for a short buffer and for an encoding error; the buffer grows up to a limit.
  for (std::size_t size = 512; size <= (std::size_t{1} << 22); size *= 4) {
    std::vector<wchar_t> buffer(size);
    va_list copy;
    va_copy(copy, args);
    int n = std::vswprintf(buffer.data(), buffer.size(), portable.c_str(), copy);
    va_end(copy);
    if (n >= 0) return std::wstring(buffer.data(), static_cast<std::size_t>(n));
  }
  return format;
}

}  // namespace host::editor
