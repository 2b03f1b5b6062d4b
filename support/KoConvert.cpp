#include "support/KoConvert.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "support/KoPlatform.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Number of UTF-16 units the text occupies: what the buffer rules count as "wide characters".
std::size_t Utf16Units(std::wstring_view text)
{
    std::size_t n = 0;
    for (wchar_t w : text)
        n += static_cast<char32_t>(w) > 0xFFFF ? 2 : 1;
    return n;
}

// Decodes one UTF-8 sequence at `pos`; an invalid or truncated sequence yields U+FFFD for its
// first byte only, so decoding resynchronises at the next byte.
char32_t DecodeUtf8(std::string_view s, std::size_t& pos)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char lead = byte(pos);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    std::size_t extra;
    char32_t c;
    char32_t minimum;
    if (lead >= 0xC2 && lead <= 0xDF) {
        extra = 1, c = lead & 0x1F, minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        extra = 2, c = lead & 0x0F, minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        extra = 3, c = lead & 0x07, minimum = 0x10000;
    } else {
        ++pos;
        return kReplacement;
    }
    if (pos + extra >= s.size()) {  // truncated at the end of the text
        ++pos;
        return kReplacement;
    }
    for (std::size_t i = 1; i <= extra; ++i) {
        const unsigned char b = byte(pos + i);
        if ((b & 0xC0) != 0x80) {
            ++pos;
            return kReplacement;
        }
        c = (c << 6) | (b & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || IsHighSurrogate(c) || IsLowSurrogate(c)) {
        ++pos;
        return kReplacement;
    }
    pos += extra + 1;
    return c;
}

}  // namespace

std::string KoWideToUtf8(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = static_cast<char32_t>(text[i]);
        // Text that came from UTF-16 may carry surrogate pairs in separate wide characters.
        if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(static_cast<char32_t>(text[i + 1]))) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[i + 1]) - 0xDC00);
            ++i;
        } else if (IsHighSurrogate(c) || IsLowSurrogate(c) || c > 0x10FFFF) {
            c = kReplacement;
        }
        AppendUtf8(out, c);
    }
    return out;
}

std::wstring KoUtf8ToWide(std::string_view text)
{
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();)
        out += static_cast<wchar_t>(DecodeUtf8(text, pos));
    return out;
}

bool KoIsAscii(const wchar_t* text)
{
    if (!text)
        return true;
    for (; *text; ++text)
        if (static_cast<char32_t>(*text) >= 128)
            return false;
    return true;
}

UniToAnsi::UniToAnsi(const wchar_t* text)
{
    if (!text || !*text)
        return;
    const std::wstring_view wide(text);
    Allocate(3 * Utf16Units(wide));
    const std::string utf8 = KoWideToUtf8(wide);
    if (utf8.size() + 1 > m_size)
        return;  // does not fit with its terminator: the conversion fails, the buffer stays empty
    std::memcpy(m_buffer, utf8.c_str(), utf8.size() + 1);
    m_converted = true;
}

AnsiToUni::AnsiToUni(const char* text)
{
    if (!text || !*text)
        return;
    const std::string_view narrow(text);
    Allocate(narrow.size() + 2);
    const std::wstring wide = KoUtf8ToWide(narrow);
    // At most n + 1 characters (terminator included) are filled; UTF-8 never needs more.
    if (wide.size() + 1 > narrow.size() + 1)
        return;
    std::wmemcpy(m_buffer, wide.c_str(), wide.size() + 1);
    m_converted = true;
}

GetAnsiOrShortPath::GetAnsiOrShortPath(const wchar_t* path, bool create)
{
    if (!path)
        return;
    const std::wstring_view wide(path);
    if (create)
        KoCreateEmptyFile(KoWideToUtf8(wide).c_str());
    if (!KoIsAscii(path) && !KoFileExists(KoWideToUtf8(wide).c_str()))
        return;  // no short name can be given for a file that does not exist

    const std::size_t wideLength = std::min(wide.size(), kMaxPath);
    std::wmemcpy(m_wide, path, wideLength);
    m_wide[wideLength] = L'\0';

    const UniToAnsi narrow(m_wide);
    if (!narrow.Converted())
        return;
    // Copy at most kMaxPath bytes, never ending inside a multi-byte character.
    std::size_t length = std::strlen(narrow.c_str());
    if (length > kMaxPath) {
        length = kMaxPath;
        while (length > 0 && (static_cast<unsigned char>(narrow.c_str()[length]) & 0xC0) == 0x80)
            --length;
    }
    std::memcpy(m_narrow, narrow.c_str(), length);
    m_narrow[length] = '\0';
}
