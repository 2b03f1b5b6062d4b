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

// The owned result buffer of a conversion: none for null or empty input, and left empty ("") when the
// text did not fit.
template <class C>
class TKoConvertBuffer {
public:
    TKoConvertBuffer(const TKoConvertBuffer&) = delete;
    TKoConvertBuffer& operator=(const TKoConvertBuffer&) = delete;
    virtual ~TKoConvertBuffer() { delete[] m_buffer; }

    // The buffer, or null when the input was null or empty.
    const C* Get() const { return m_buffer; }
    // Never null: empty without a buffer or after a failed conversion.
    const C* c_str() const
    {
        static constexpr C kEmpty[1] = {};
        return m_buffer ? m_buffer : kEmpty;
    }
    bool Converted() const { return m_converted; }
    std::size_t BufferSize() const { return m_size; }  // in characters of the buffer

protected:
    TKoConvertBuffer() = default;
    C* Allocate(std::size_t size)
    {
        m_size = size;
        m_buffer = new C[size]();
        return m_buffer;
    }

    C* m_buffer = nullptr;
    std::size_t m_size = 0;
    bool m_converted = false;
};

class UniToAnsi : public TKoConvertBuffer<char> {
public:
    explicit UniToAnsi(const wchar_t* text);
    explicit UniToAnsi(const std::wstring& text) : UniToAnsi(text.c_str()) {}
};

class AnsiToUni : public TKoConvertBuffer<wchar_t> {
public:
    explicit AnsiToUni(const char* text);
    explicit AnsiToUni(const std::string& text) : AnsiToUni(text.c_str()) {}
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
