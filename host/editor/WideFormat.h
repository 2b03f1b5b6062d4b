// Wide printf formats as modules write them for their home platform, where %s in a wide format takes a
// wide string. The C library here reads %s as a narrow string, so formats are translated before use.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace host::editor {

// %s, %c -> wide (%ls, %lc); %hs, %hc, %S, %C -> narrow; %I64 -> %ll, %I32 -> plain, %I -> %z.
std::wstring toPortableFormat(std::wstring_view format);

// Formats with a module's wide format; on a format the C library rejects, answers the format itself.
std::wstring formatWide(const wchar_t* format, va_list args);

}  // namespace host::editor
