#pragma once
// Conversions between wide text (UI and host strings, std::wstring) and narrow UTF-8 text.
//
// UniToAnsi and AnsiToUni keep the buffer sizes the library has always used, so their results match
// files written before: UniToAnsi allows 3 bytes per UTF-16 unit with no extra room for the
// terminator, so a text made only of three-byte characters (for example "€") does not fit and the
// conversion fails, leaving an empty buffer. For conversions without that limit use KoWideToUtf8 /
// KoUtf8ToWide.

#include <cstddef>
#include <string>
#include <string_view>

// Complete conversions. Invalid input (unpaired surrogates, bad UTF-8 bytes) becomes U+FFFD.
std::string KoWideToUtf8(std::wstring_view text);
std::wstring KoUtf8ToWide(std::string_view text);

// True for null, for empty, and when every character is below 128.
bool KoIsAscii(const wchar_t* text);

class UniToAnsi {
public:
    explicit UniToAnsi(const wchar_t* text);
    explicit UniToAnsi(const std::wstring& text) : UniToAnsi(text.c_str()) {}
    UniToAnsi(const UniToAnsi&) = delete;
    UniToAnsi& operator=(const UniToAnsi&) = delete;
    virtual ~UniToAnsi();

    // The buffer, or null when the input was null or empty.
    const char* Get() const { return m_buffer; }
    // Never null: "" without a buffer or after a failed conversion.
    const char* c_str() const { return m_buffer ? m_buffer : ""; }
    bool Converted() const { return m_converted; }
    std::size_t BufferSize() const { return m_size; }

private:
    char* m_buffer = nullptr;
    std::size_t m_size = 0;
    bool m_converted = false;
};

class AnsiToUni {
public:
    explicit AnsiToUni(const char* text);
    explicit AnsiToUni(const std::string& text) : AnsiToUni(text.c_str()) {}
    AnsiToUni(const AnsiToUni&) = delete;
    AnsiToUni& operator=(const AnsiToUni&) = delete;
    virtual ~AnsiToUni();

    const wchar_t* Get() const { return m_buffer; }
    const wchar_t* c_str() const { return m_buffer ? m_buffer : L""; }
    bool Converted() const { return m_converted; }
    std::size_t BufferSize() const { return m_size; }  // in wide characters

private:
    wchar_t* m_buffer = nullptr;
    std::size_t m_size = 0;
    bool m_converted = false;
};

// A narrow form of a wide path, for interfaces that take only narrow file names.
// On POSIX a path needs no short form: a pure ASCII path is taken as it stands; any other path must
// name an existing file (as a short name exists only for one) and its narrow form is its UTF-8 text.
// With `create` the file is first created empty. Paths that cannot be given leave both forms empty.
class GetAnsiOrShortPath {
public:
    static constexpr std::size_t kMaxPath = 520;

    GetAnsiOrShortPath(const wchar_t* path, bool create);
    const char* Narrow() const { return m_narrow; }
    const wchar_t* Wide() const { return m_wide; }

private:
    char m_narrow[kMaxPath + 1] = {};
    wchar_t m_wide[kMaxPath + 1] = {};
};
