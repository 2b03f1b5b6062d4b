#pragma once
// The class library's narrow text type. Names of points, log lines and file paths are kept in it.
// The buffer carries its 32-bit length in front of the characters; every empty String shares one
// static representation, so a point without a name costs no heap block.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Raised for index access outside the text and for the first/last character of an empty text.
class KoIndexError : public std::out_of_range {
public:
    KoIndexError() : std::out_of_range("invalid index") {}
};

class String;

// A view into a String, returned by the left/right/middle part operations. It does not own the
// characters: keep the String alive while the view is used, or convert it to a String.
class SubString {
public:
    SubString(const char* text, std::size_t length) : m_text(text), m_length(length) {}
    std::size_t Length() const { return m_length; }
    std::string_view View() const { return {m_text, m_length}; }
    operator std::string_view() const { return View(); }

private:
    const char* m_text;
    std::size_t m_length;
};

class String {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    String() noexcept;
    String(const char* text);  // null counts as empty
    String(const char* text, std::size_t length);
    String(std::string_view text);
    String(const SubString& part);
    String(const String& other);
    String(String&& other) noexcept;
    ~String();

    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;
    String& operator=(const char* text);
    String& operator=(std::string_view text);

    std::size_t Length() const;
    bool IsEmpty() const { return Length() == 0; }
    const char* c_str() const { return m_text; }
    std::string_view View() const { return {m_text, Length()}; }
    operator std::string_view() const { return View(); }
    std::string StdString() const { return std::string(View()); }
    // False for every empty String: they all point at the shared empty representation.
    bool OwnsMemory() const;

    // Throw KoIndexError outside 0 .. Length()-1.
    char operator[](std::size_t index) const;
    void SetAt(std::size_t index, char c);
    char First() const;
    char Last() const;

    SubString Left(std::size_t count) const;
    SubString Right(std::size_t count) const;
    SubString Mid(std::size_t start, std::size_t count = npos) const;

    // Positions are -1 when nothing is found.
    long Find(char c, std::size_t from = 0) const;
    long Find(std::string_view text, std::size_t from = 0) const;
    long FindLast(char c) const;
    long FindLastOf(std::string_view set) const;

    // Byte-wise text comparison (<0, 0, >0); the second form ignores ASCII letter case.
    int Compare(std::string_view other) const;
    int CompareNoCase(std::string_view other) const;
    bool EqualsNoCase(std::string_view other) const { return CompareNoCase(other) == 0; }

    String& operator+=(std::string_view text);
    String& operator+=(char c);

    // Path operations. Separators are '\\', '/' and ':' (drive letters), searched from the end.
    String DirPart() const;            // before the last separator, empty without one
    String FilePart() const;           // after the last separator, everything without one
    String Extension() const;          // after the last '.', empty without one
    String WithoutExtension() const;   // before the last '.', everything without one
    // Joins with a '\\' unless the directory ends with one or the name begins with one.
    static String JoinPath(std::string_view dir, std::string_view name);

    // Splits at the separator into at most maxItems items (0: no limit). Runs of separators count
    // as one and leading/trailing separators give no empty items, so "1.0  2.0" gives two items.
    // The last item takes the remainder of the text when the limit is reached.
    std::vector<String> Split(char separator, std::size_t maxItems = 0) const;

    // printf-style formatting into a new String.
    static String Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

private:
    void Assign(const char* text, std::size_t length);
    void Release() noexcept;

    char* m_text;  // characters of the buffer; the 32-bit length sits just before them
};

bool operator==(const String& a, const String& b);
bool operator==(const String& a, std::string_view b);
bool operator==(const String& a, const char* b);
bool operator<(const String& a, const String& b);
String operator+(const String& a, std::string_view b);
