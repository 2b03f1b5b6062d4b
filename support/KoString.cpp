#include "support/KoString.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Layout of a heap buffer: [uint32 length][characters][terminator].
struct EmptyRep {
    std::uint32_t length = 0;
    char text[1] = {'\0'};
};
EmptyRep g_emptyRep;

constexpr std::size_t kHeader = sizeof(std::uint32_t);

char* EmptyText() { return g_emptyRep.text; }

std::uint32_t& LengthOf(char* text) { return *reinterpret_cast<std::uint32_t*>(text - kHeader); }
std::uint32_t LengthOf(const char* text)
{
    std::uint32_t length;
    std::memcpy(&length, text - kHeader, sizeof length);
    return length;
}

bool IsPathSeparator(char c) { return c == '\\' || c == '/' || c == ':'; }

int ToLower(char c) { return std::tolower(static_cast<unsigned char>(c)); }

}  // namespace

String::String() noexcept : m_text(EmptyText()) {}

String::String(const char* text) : m_text(EmptyText())
{
    if (text)
        Assign(text, std::strlen(text));
}

String::String(const char* text, std::size_t length) : m_text(EmptyText()) { Assign(text, length); }

String::String(std::string_view text) : m_text(EmptyText()) { Assign(text.data(), text.size()); }

String::String(const SubString& part) : String(part.View()) {}

String::String(const String& other) : m_text(EmptyText()) { Assign(other.m_text, other.Length()); }

String::String(String&& other) noexcept : m_text(other.m_text) { other.m_text = EmptyText(); }

String::~String() { Release(); }

String& String::operator=(const String& other)
{
    if (this != &other)
        Assign(other.m_text, other.Length());
    return *this;
}

String& String::operator=(String&& other) noexcept
{
    if (this != &other) {
        Release();
        m_text = other.m_text;
        other.m_text = EmptyText();
    }
    return *this;
}

String& String::operator=(const char* text) { return *this = std::string_view(text ? text : ""); }

String& String::operator=(std::string_view text)
{
    Assign(text.data(), text.size());
    return *this;
}

void String::Assign(const char* text, std::size_t length)
{
    if (length == 0) {
        Release();
        return;
    }
    if (length > UINT32_MAX - kHeader - 1)
        throw std::length_error("String too long");
    // Allocate first: the source may lie inside our own buffer.
    char* block = static_cast<char*>(::operator new(kHeader + length + 1));
    char* fresh = block + kHeader;
    std::memcpy(fresh, text, length);
    fresh[length] = '\0';
    LengthOf(fresh) = static_cast<std::uint32_t>(length);
    Release();
    m_text = fresh;
}

void String::Release() noexcept
{
    if (m_text != EmptyText())
        ::operator delete(m_text - kHeader);
    m_text = EmptyText();
}

std::size_t String::Length() const { return LengthOf(static_cast<const char*>(m_text)); }

bool String::OwnsMemory() const { return m_text != EmptyText(); }

char String::operator[](std::size_t index) const
{
    if (index >= Length())
        throw KoIndexError();
    return m_text[index];
}

void String::SetAt(std::size_t index, char c)
{
    if (index >= Length())
        throw KoIndexError();
    m_text[index] = c;
}

char String::First() const
{
    if (IsEmpty())
        throw KoIndexError();
    return m_text[0];
}

char String::Last() const
{
    if (IsEmpty())
        throw KoIndexError();
    return m_text[Length() - 1];
}

SubString String::Left(std::size_t count) const { return {m_text, std::min(count, Length())}; }

SubString String::Right(std::size_t count) const
{
    const std::size_t n = std::min(count, Length());
    return {m_text + Length() - n, n};
}

SubString String::Mid(std::size_t start, std::size_t count) const
{
    const std::size_t length = Length();
    if (start >= length)
        return {m_text + length, 0};
    return {m_text + start, std::min(count, length - start)};
}

long String::Find(char c, std::size_t from) const
{
    const auto pos = View().find(c, from);
    return pos == std::string_view::npos ? -1 : static_cast<long>(pos);
}

long String::Find(std::string_view text, std::size_t from) const
{
    const auto pos = View().find(text, from);
    return pos == std::string_view::npos ? -1 : static_cast<long>(pos);
}

long String::FindLast(char c) const
{
    const auto pos = View().rfind(c);
    return pos == std::string_view::npos ? -1 : static_cast<long>(pos);
}

long String::FindLastOf(std::string_view set) const
{
    const auto pos = View().find_last_of(set);
    return pos == std::string_view::npos ? -1 : static_cast<long>(pos);
}

int String::Compare(std::string_view other) const
{
    const int c = View().compare(other);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

int String::CompareNoCase(std::string_view other) const
{
    const std::string_view mine = View();
    const std::size_t n = std::min(mine.size(), other.size());
    for (std::size_t i = 0; i < n; ++i) {
        const int d = ToLower(mine[i]) - ToLower(other[i]);
        if (d != 0)
            return d < 0 ? -1 : 1;
    }
    if (mine.size() == other.size())
        return 0;
    return mine.size() < other.size() ? -1 : 1;
}

String& String::operator+=(std::string_view text)
{
    if (text.empty())
        return *this;
    std::string joined(View());
    joined += text;
    Assign(joined.data(), joined.size());
    return *this;
}

String& String::operator+=(char c) { return *this += std::string_view(&c, 1); }

String String::DirPart() const
{
    const std::string_view v = View();
    for (std::size_t i = v.size(); i > 0; --i)
        if (IsPathSeparator(v[i - 1]))
            return String(v.substr(0, i - 1));
    return String();
}

String String::FilePart() const
{
    const std::string_view v = View();
    for (std::size_t i = v.size(); i > 0; --i)
        if (IsPathSeparator(v[i - 1]))
            return String(v.substr(i));
    return *this;
}

String String::Extension() const
{
    const long dot = FindLast('.');
    return dot < 0 ? String() : String(View().substr(static_cast<std::size_t>(dot) + 1));
}

String String::WithoutExtension() const
{
    const long dot = FindLast('.');
    return dot < 0 ? *this : String(View().substr(0, static_cast<std::size_t>(dot)));
}

String String::JoinPath(std::string_view dir, std::string_view name)
{
    std::string joined(dir);
    const bool dirEnds = !dir.empty() && dir.back() == '\\';
    const bool nameBegins = !name.empty() && name.front() == '\\';
    if (!dirEnds && !nameBegins)
        joined += '\\';
    joined += name;
    return String(joined);
}

std::vector<String> String::Split(char separator, std::size_t maxItems) const
{
    std::vector<String> items;
    const std::string_view v = View();
    std::size_t pos = 0;
    while (pos < v.size()) {
        while (pos < v.size() && v[pos] == separator)
            ++pos;
        if (pos == v.size())
            break;
        if (maxItems != 0 && items.size() + 1 == maxItems) {
            std::size_t end = v.size();
            while (end > pos && v[end - 1] == separator)
                --end;
            items.emplace_back(v.substr(pos, end - pos));
            break;
        }
        std::size_t end = v.find(separator, pos);
        if (end == std::string_view::npos)
            end = v.size();
        items.emplace_back(v.substr(pos, end - pos));
        pos = end;
    }
    return items;
}

String String::Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int needed = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    String result;
    if (needed > 0) {
        std::string buffer(static_cast<std::size_t>(needed) + 1, '\0');
        std::vsnprintf(buffer.data(), buffer.size(), format, args);
        result.Assign(buffer.data(), static_cast<std::size_t>(needed));
    }
    va_end(args);
    return result;
}

bool operator==(const String& a, const String& b) { return a.View() == b.View(); }
bool operator==(const String& a, std::string_view b) { return a.View() == b; }
bool operator==(const String& a, const char* b) { return a.View() == std::string_view(b ? b : ""); }
bool operator<(const String& a, const String& b) { return a.View() < b.View(); }

String operator+(const String& a, std::string_view b)
{
    String result(a);
    result += b;
    return result;
}
