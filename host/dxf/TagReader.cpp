#include "host/dxf/TagReader.h"

#include "host/dxf/TagList.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace dxf {

namespace {

ValueKind kindOf(int code) {
  if (code < 0) return ValueKind::Unknown;
  if (code <= 9) return ValueKind::Text;
  if (code <= 59) return ValueKind::Real;
  if (code <= 79) return ValueKind::Integer;
  if (code <= 89) return ValueKind::Unknown;
  if (code <= 99) return ValueKind::Integer;
  if (code <= 102 || code == 105) return ValueKind::Text;  // subclass marker, embedded object, control string
  if (code <= 109) return ValueKind::Unknown;
  if (code <= 149) return ValueKind::Real;
  if (code <= 159) return ValueKind::Unknown;
  if (code <= 179) return ValueKind::Integer;
  if (code <= 209) return ValueKind::Unknown;
  if (code <= 239) return ValueKind::Real;
  if (code <= 269) return ValueKind::Unknown;
  if (code <= 289) return ValueKind::Integer;
  if (code <= 299) return ValueKind::Integer;  // booleans, written as 0 or 1
  if (code <= 369) return ValueKind::Text;     // texts, binary chunks, handles
  if (code <= 389) return ValueKind::Integer;
  if (code <= 399) return ValueKind::Text;
  if (code <= 409) return ValueKind::Integer;
  if (code <= 419) return ValueKind::Text;
  if (code <= 429) return ValueKind::Integer;
  if (code <= 439) return ValueKind::Text;
  if (code <= 459) return ValueKind::Integer;
  if (code <= 469) return ValueKind::Real;
  if (code <= 481) return ValueKind::Text;
  if (code == 999) return ValueKind::Text;  // comment
  if (code < 1000) return ValueKind::Unknown;
  if (code <= 1009) return ValueKind::Text;
  if (code <= 1059) return ValueKind::Real;
  if (code <= 1071) return ValueKind::Integer;
  return ValueKind::Unknown;
}

// Looked up for every tag read: a table instead of the ranges above.
constexpr int kKnownCodes = 1072;
const auto kKinds = [] {
  std::array<ValueKind, kKnownCodes> kinds{};
  for (int c = 0; c < kKnownCodes; ++c) kinds[static_cast<std::size_t>(c)] = kindOf(c);
  return kinds;
}();

}  // namespace

ValueKind valueKind(int code) {
  return code >= 0 && code < kKnownCodes ? kKinds[static_cast<std::size_t>(code)] : ValueKind::Unknown;
}

std::optional<std::string> refuseFormat(std::string_view bytes) {
  if (bytes.empty()) return "the file is empty";
  if (bytes.size() >= 6 && bytes.substr(0, 4) == "AC10")
    return "this is a DWG drawing, not DXF; export it as ASCII DXF";
  if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos) return "the file is empty";
  // AutoCAD 1.x wrote its drawing interchange files as keyword lines such as "EXTENTS,1", before
  // group codes existed.
  const std::string_view first = bytes.substr(0, bytes.find_first_of("\r\n"));
  const std::size_t comma = first.find(',');
  if (comma != std::string_view::npos && comma > 0 &&
      first.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == comma && first.substr(comma + 1) == "1")
    return "this is an AutoCAD 1.x interchange file from before DXF group codes; it cannot be read";
  return std::nullopt;
}

TagReader::TagReader(std::string_view buffer, std::size_t from, RepairLog* repairs)
    : buffer_(buffer), pos_(from), repairs_(repairs) {
  // Text has no NUL bytes; finding the first once spares a search in every line. It is looked for from where
  // reading starts: one before would hide every later one (see nextLine).
  const void* nul = from < buffer.size() ? std::memchr(buffer.data() + from, '\0', buffer.size() - from) : nullptr;
  firstNul_ = nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - buffer.data()) : buffer.size();
}

void TagReader::fail(std::size_t line, std::string_view message) {
  if (error_.empty()) error_ = "line " + std::to_string(line) + ": " + std::string(message);
  ready_ = false;
  pos_ = buffer_.size();
}

namespace {

// The next line feed at or after `p`, or `end`. DXF lines are short (a group code, a coordinate), so a
// library search costs more in calling than in searching; this looks at eight bytes at a time.
const char* findNewline(const char* p, const char* end) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
    constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
    constexpr std::uint64_t kNewlines = kOnes * '\n';
    while (end - p >= 8) {
      std::uint64_t word = 0;
      std::memcpy(&word, p, 8);
      const std::uint64_t x = word ^ kNewlines;  // a zero byte where the line feed is
      const std::uint64_t zero = (x - kOnes) & ~x & kHighs;
      if (zero != 0) return p + (std::countr_zero(zero) >> 3);
      p += 8;
    }
  }
  while (p != end && *p != '\n') ++p;
  return p;
}

}  // namespace

TagReader::Line TagReader::nextLine(std::string_view& out) {
  if (pos_ >= buffer_.size()) return Line::End;
  const char* begin = buffer_.data() + pos_;
  const char* end = buffer_.data() + buffer_.size();
  const char* p = findNewline(begin, end);
  std::size_t length = static_cast<std::size_t>(p - begin);
  pos_ += p == end ? length : length + 1;
  if (length > 0 && begin[length - 1] == '\r') --length;
  out = {begin, length};
  const std::size_t number = line_++;
  // The first NUL byte not yet passed never lies before this line. One in it moves on to the next, whatever
  // else is wrong with the line: recovery skips a long line too, and the next NUL must still be seen.
  const bool holdsNul = firstNul_ < pos_;
  if (holdsNul) {
    const void* nul = pos_ < buffer_.size() ? std::memchr(buffer_.data() + pos_, '\0', buffer_.size() - pos_) : nullptr;
    firstNul_ = nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - buffer_.data()) : buffer_.size();
  }
  if (length > kMaxLineLength) {
    if (!repairs_) fail(number, "the line is longer than " + std::to_string(kMaxLineLength) + " bytes");
    return Line::Bad;
  }
  if (holdsNul) {
    if (!repairs_) fail(number, "the line holds a NUL byte; this is not a text DXF file");
    return Line::Bad;  // recovery reads on
  }
  return Line::Ok;
}

bool TagReader::skip(std::size_t line, std::string_view repair, std::string_view message, std::size_t lines) {
  if (!repairs_) {
    fail(line, message);
    return false;
  }
  repairs_->note(repair);
  skipped_ += lines;
  return true;
}

namespace {

// Group codes are short integers, usually right-aligned in a field of three.
std::optional<int> parseCode(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  bool negative = false;
  if (!s.empty() && s.front() == '-') {
    negative = true;
    s.remove_prefix(1);
  }
  if (s.empty() || s.size() > 6) return std::nullopt;
  int v = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    v = v * 10 + (c - '0');
  }
  return negative ? -v : v;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Checks the spelling of a real without computing it: millions of coordinates pass here on every load.
// Only a number with an exponent, which may lie out of range, is read in full. What passes here is read
// by parseNumber() later.
bool isReal(std::string_view s) {
  s = trimBlanks(s);
  std::size_t i = 0;
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) ++i;
  std::size_t digits = 0;
  while (i < s.size() && isDigit(s[i])) ++i, ++digits;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && isDigit(s[i])) ++i, ++digits;
  }
  if (digits == 0) return false;
  if (i == s.size()) return true;
  if (s[i] != 'e' && s[i] != 'E') return false;
  return parseNumber(s).has_value();
}

bool isInteger(std::string_view s) {
  s = trimBlanks(s);
  std::size_t i = 0;
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) ++i;
  const std::size_t first = i;
  while (i < s.size() && isDigit(s[i])) ++i;
  if (i != s.size() || i == first) return false;
  return i - first <= 18 || parseInteger(s).has_value();  // 18 digits always fit
}

std::string quoted(std::string_view s) {
  constexpr std::size_t kShown = 40;
  std::string q = "\"";
  q += s.substr(0, kShown);
  if (s.size() > kShown) q += "...";
  return q + "\"";
}

}  // namespace

bool TagReader::read() {
  RawTag& t = current_;
  for (;;) {
    t.start = buffer_.data() + pos_;
    t.line = line_;
    const Line codeLine = nextLine(t.codeText);
    if (codeLine == Line::End) return false;
    if (codeLine == Line::Bad) {
      if (skip(t.line, "unreadable lines skipped", {}, 1)) continue;
      return false;
    }
    const std::optional<int> code = parseCode(t.codeText);
    if (!code) {
      if (skip(t.line, "lines without a group code skipped", "group code " + quoted(t.codeText) + " is not a number", 1))
        continue;
      return false;
    }
    t.code = *code;
    const ValueKind kind = valueKind(t.code);
    const Line valueLine = nextLine(t.text);
    if (valueLine == Line::End) {
      if (failed()) return false;
      if (repairs_) {
        repairs_->note("group code without its value at the end dropped");
        ++skipped_;
        return false;
      }
      fail(t.line, "the file ends after group code " + std::to_string(t.code) + " without its value");
      return false;
    }
    if (repairs_ && pos_ >= buffer_.size() && buffer_.back() != '\n' && !(t.code == 0 && trimBlanks(t.text) == "EOF")) {
      // A file cut off in the middle of its last value: what is left of the value is not what was there.
      repairs_->note("tag cut off at the end dropped");
      ++skipped_;
      return false;
    }
    if (kind == ValueKind::Unknown) {
      if (skip(t.line, "tags with an unknown group code dropped", "unknown group code " + std::to_string(t.code), 2))
        continue;
      return false;
    }
    if (valueLine == Line::Bad) {
      if (skip(t.line + 1, "tags with an unreadable value dropped", {}, 2)) continue;
      return false;
    }
    if (kind == ValueKind::Real && !isReal(t.text)) {
      if (skip(t.line + 1, "tags whose value is no number dropped",
               quoted(t.text) + " is not a number (group code " + std::to_string(t.code) + ")", 2))
        continue;
      return false;
    }
    if (kind == ValueKind::Integer && !isInteger(t.text)) {
      if (skip(t.line + 1, "tags whose value is no number dropped",
               quoted(t.text) + " is not an integer (group code " + std::to_string(t.code) + ")", 2))
        continue;
      return false;
    }
    return true;
  }
}

const RawTag* TagReader::peek() {
  if (ready_) return &current_;
  if (failed() || pos_ >= buffer_.size()) return nullptr;
  ready_ = read();
  return ready_ ? &current_ : nullptr;
}

}  // namespace dxf
