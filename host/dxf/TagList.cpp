#include "host/dxf/TagList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace dxf {

namespace {

// The usual code lines of the group codes DXF knows, right-aligned in three columns, four bytes apart.
constexpr int kHighestCode = 1071;
constexpr auto kCodeLines = [] {
  std::array<char, 4 * (kHighestCode + 1)> lines{};
  for (int c = 0; c <= kHighestCode; ++c) {
    char* slot = lines.data() + 4 * c;
    slot[0] = slot[1] = slot[2] = slot[3] = ' ';
    int v = c;
    for (int k = c >= 1000 ? 3 : 2; k >= 0; --k) {
      if (v > 0 || k == (c >= 1000 ? 3 : 2)) slot[k] = static_cast<char>('0' + v % 10);
      v /= 10;
    }
  }
  return lines;
}();

std::string_view standardCode(int code) {
  if (code < 0 || code > kHighestCode) return {};
  return {kCodeLines.data() + 4 * code, code >= 1000 ? 4u : 3u};
}

// The shortest round-trip text of a number, into `out` (kMaxNumberText bytes: the longest shortest form of
// a double has 24 characters); its length.
std::size_t formatInto(double value, char* out) {
  if (value == 0.0) {  // also folds -0.0, which some readers refuse
    std::memcpy(out, "0.0", 3);
    return 3;
  }
  auto [end, ec] = std::to_chars(out, out + kMaxNumberText - 2, value);
  if (ec != std::errc()) return 0;
  const std::string_view s(out, static_cast<std::size_t>(end - out));
  // A real must look like one to other readers: a point, an exponent, or "inf"/"nan".
  const bool looksReal = std::any_of(s.begin(), s.end(), [](char c) { return c == '.' || c == 'e' || c == 'n'; });
  if (std::isfinite(value) && !looksReal) {
    *end++ = '.';
    *end++ = '0';
  }
  return static_cast<std::size_t>(end - out);
}

// Group codes of reals (coordinates, sizes, angles) and the length their changed texts usually have.
bool isRealCode(int code) {
  return (code >= 10 && code <= 59) || (code >= 110 && code <= 149) || (code >= 210 && code <= 239) ||
         (code >= 460 && code <= 469) || (code >= 1010 && code <= 1059);
}
constexpr std::size_t kKeptRealLength = sizeof(double);

}  // namespace

TagList::TextStore::TextStore(const TextStore& other)
    : data_(other.size_ ? std::make_unique_for_overwrite<char[]>(other.size_) : nullptr),
      size_(other.size_),
      capacity_(other.size_) {
  if (size_) std::memcpy(data_.get(), other.data_.get(), size_);
}

TagList::TextStore::TextStore(TextStore&& other) noexcept
    : data_(std::move(other.data_)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

TagList::TextStore& TagList::TextStore::operator=(TextStore&& other) noexcept {
  data_ = std::move(other.data_);
  size_ = std::exchange(other.size_, 0);
  capacity_ = std::exchange(other.capacity_, 0);
  return *this;
}

std::uint32_t TagList::TextStore::append(std::string_view text, std::size_t firstCapacity) {
  constexpr std::size_t kLimit = std::numeric_limits<std::int32_t>::max();
  if (text.size() > kLimit - size_) throw std::length_error("dxf::TagList: texts too large");
  const std::size_t needed = size_ + text.size();
  if (needed > capacity_) {
    // Half again as much room: a transformation sets a record's numbers one after the other.
    const std::size_t wanted = capacity_ == 0 ? firstCapacity : capacity_ + capacity_ / 2;
    const std::size_t grown = std::min(kLimit, std::max<std::size_t>({needed, wanted, 48}));
    auto bigger = std::make_unique_for_overwrite<char[]>(grown);  // filled as texts come
    if (size_) std::memcpy(bigger.get(), data_.get(), size_);
    data_ = std::move(bigger);
    capacity_ = static_cast<std::uint32_t>(grown);
  }
  if (!text.empty()) std::memcpy(data_.get() + size_, text.data(), text.size());
  const std::uint32_t at = size_;
  size_ = static_cast<std::uint32_t>(needed);
  return at;
}

TagList::TagList(const TagList& other)
    : tags_(other.tags_), base_(other.base_), own_(other.own_), modified_(other.modified_) {}  // spelled anew

TagList& TagList::operator=(const TagList& other) {
  if (this != &other) {
    TagList copy(other);
    *this = std::move(copy);
  }
  return *this;
}

namespace {

struct WideHeader {
  std::int32_t code;
  std::uint32_t length;
};

}  // namespace

int TagList::wideCode(const Packed& p) const {
  WideHeader h;
  std::memcpy(&h, own_.data() + p.offset, sizeof h);
  return h.code;
}

double TagList::numberAt(const Packed& p) const {
  double v;
  std::memcpy(&v, own_.data() + p.offset, sizeof v);
  return v;
}

std::string_view TagList::spelled(const Packed& p) const {
  constexpr std::size_t kSlot = 32;
  static_assert(kSlot >= kMaxNumberText);
  // Kept numbers lie at least 8 bytes apart in own_: offset / 8 gives each its own slot.
  const std::uint32_t slots = own_.size() / sizeof(double) + 1;
  std::uint32_t made = 0;
  if (spelled_) std::memcpy(&made, spelled_.get(), sizeof made);
  if (made < slots) {
    spelled_ = std::make_unique<char[]>(std::size_t{slots + 1} * kSlot);  // zeroed: nothing spelled yet
    std::memcpy(spelled_.get(), &slots, sizeof slots);
  }
  char* slot = spelled_.get() + std::size_t{p.offset / sizeof(double) + 1} * kSlot;
  if (slot[0] == 0) slot[0] = static_cast<char>(formatInto(numberAt(p), slot + 1));
  return {slot + 1, static_cast<std::size_t>(slot[0])};
}

std::string_view TagList::text(std::size_t i) const {
  const Packed& p = tags_[i];
  if (isNumber(p)) return spelled(p);
  if (p.code() == kWideCode) {
    WideHeader h;
    std::memcpy(&h, own_.data() + p.offset, sizeof h);
    return {own_.data() + p.offset + sizeof h, h.length};
  }
  const char* start = (p.flags() & kOwned) ? own_.data() : base_;
  return {start + p.offset, p.length()};
}

bool TagList::keptNumber(std::size_t i, double& value) const {
  const Packed& p = tags_[i];
  if (!isNumber(p)) return false;
  value = numberAt(p);
  return true;
}

std::string_view TagList::fileBytes(std::size_t i) const {
  const Packed& p = tags_[i];
  if ((p.flags() & (kOwned | kStandardCode)) || p.codeLength() == 0 || p.code() == kWideCode) return {};
  const std::size_t lineEnd = (p.flags() & kCrLf) ? 2 : 1;
  const std::size_t before = p.codeLength() + lineEnd;
  return {base_ + p.offset - before, before + p.length()};
}

std::string_view TagList::codeText(std::size_t i) const {
  const Packed& p = tags_[i];
  if (p.flags() & kStandardCode) return standardCode(code(i));
  const std::uint32_t length = p.codeLength();
  if (length == 0) return {};
  if (p.flags() & kOwned) return {own_.data() + p.offset - length, length};
  const std::size_t lineEnd = (p.flags() & kCrLf) ? 2 : 1;
  return {base_ + p.offset - lineEnd - length, length};
}

void TagList::appendRaw(int code, std::string_view codeText, std::string_view text) {
  if (base_ == nullptr) base_ = text.data();
  const std::ptrdiff_t offset = text.data() - base_;
  if (offset < 0 || offset > std::numeric_limits<std::uint32_t>::max() || text.size() > kMaxLength || code < 0 ||
      code >= kWideCode) {
    // Out of reach of the packed form: keep a copy instead.
    tags_.push_back(packOwned(code, text));
    return;
  }
  // The code line is kept only where it stands right before the value line, as it does in a file.
  std::uint32_t codeLength = 0;
  std::uint32_t flags = 0;
  const std::ptrdiff_t gap = text.data() - (codeText.data() + codeText.size());
  if (!codeText.empty() && codeText.size() <= kMaxCodeLength && (gap == 1 || gap == 2)) {
    codeLength = static_cast<std::uint32_t>(codeText.size());
    if (gap == 2) flags |= kCrLf;
  }
  tags_.push_back(pack(static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(text.size()), code,
                       codeLength, flags));
}

std::size_t TagList::firstCapacity() const {
  if (own_.data() != nullptr) return 0;
  // The first change of a record read from a file is mostly the start of a transformation, which sets
  // all its coordinates: room for each of its reals spares the store from growing (and the heap from the
  // pieces it leaves).
  std::size_t room = 0;
  for (std::size_t i = 0; i < tags_.size(); ++i) room += isRealCode(this->code(i)) ? kKeptRealLength : 0;
  return room;
}

TagList::Packed TagList::packOwned(int code, std::string_view text) {
  const std::size_t firstCapacity = this->firstCapacity();
  if (text.size() > kMaxLength || code < 0 || code >= kWideCode) {
    const WideHeader h{code, static_cast<std::uint32_t>(text.size())};
    char header[sizeof h];
    std::memcpy(header, &h, sizeof h);
    const std::uint32_t at = own_.append(std::string_view(header, sizeof header), firstCapacity);
    own_.append(text);
    return pack(at, 0, kWideCode, 0, kOwned);
  }
  return pack(own_.append(text, firstCapacity), static_cast<std::uint32_t>(text.size()), code, 0, kOwned);
}

TagList::Packed TagList::packNumber(int code, double value) {
  if (code < 0 || code >= kWideCode) {
    char buf[kMaxNumberText];
    return packOwned(code, std::string_view(buf, formatInto(value, buf)));
  }
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return pack(own_.append(std::string_view(bytes, sizeof bytes), firstCapacity()), 0, code, 0, kNumber);
}

std::optional<double> TagList::number(std::size_t i) const {
  const Packed& p = tags_[i];
  if (isNumber(p)) return numberAt(p);
  return parseNumber(text(i));
}

std::optional<long long> TagList::integer(std::size_t i) const { return parseInteger(text(i)); }

std::optional<std::size_t> TagList::find(int code, std::size_t from) const {
  for (std::size_t i = from; i < tags_.size(); ++i)
    if (this->code(i) == code) return i;
  return std::nullopt;
}

void TagList::setNumber(std::size_t i, double value) {
  // No text: a transformation sets millions of these, spelled only when the drawing is written.
  replaceValue(i, [&](int code) { return packNumber(code, value); });
}

void TagList::setInteger(std::size_t i, long long value) { setText(i, std::to_string(value)); }

void TagList::setText(std::size_t i, std::string text) { replaceText(i, text); }

void TagList::replaceText(std::size_t i, std::string_view text) {
  replaceValue(i, [&](int code) { return packOwned(code, text); });
}

template <class Pack>
void TagList::replaceValue(std::size_t i, const Pack& packValue) {
  // The code line stays with the new value, so that a changed tag keeps the spelling of its code; the
  // usual spelling needs no room of its own.
  const std::string_view code = codeText(i);
  const int c = this->code(i);
  Packed fresh{};
  if (!code.empty() && sameShortText(code, standardCode(c))) {
    fresh = packValue(c);
    fresh.bits |= kStandardCode << 29;
  } else if (!code.empty() && code.size() <= kMaxCodeLength && c >= 0 && c < kWideCode) {
    const std::string kept(code);  // the store may move while it grows
    const std::uint32_t at = own_.append(kept, firstCapacity());
    fresh = packValue(c);
    if (fresh.code() != kWideCode && fresh.offset == at + kept.size())
      fresh.bits |= static_cast<std::uint32_t>(kept.size()) << 25;
  } else {
    fresh = packValue(c);
  }
  tags_[i] = fresh;
  modified_ = true;
}

void TagList::insert(std::size_t i, int code, std::string text) { insertPacked(i, packOwned(code, text)); }

void TagList::insertNumber(std::size_t i, int code, double value) { insertPacked(i, packNumber(code, value)); }

void TagList::insertPacked(std::size_t i, Packed p) {
  // A record read from a file has its tags at their exact count; a transformation adds one or two (an
  // elevation, an extrusion), which must not double the room of every record of the drawing.
  if (tags_.size() == tags_.capacity()) tags_.reserve(tags_.size() + 4);
  tags_.insert(i, p);
  modified_ = true;
}

void TagList::restorePristine(const void* packed, std::size_t count, const char* base) {
  static_assert(sizeof(Packed) == kPackedTagSize);
  const auto* first = static_cast<const Packed*>(packed);
  if (count == 0)
    tags_.clear();  // keeps the room
  else
    tags_.assign(first, first + count);
  base_ = base;
  own_ = TextStore();
  spelled_.reset();
  modified_ = false;
}

void TagList::erase(std::size_t i) {
  tags_.erase(i);
  modified_ = true;
}

void TagList::PackedTags::reserve(std::size_t n) {
  if (n <= capacity_) return;
  if (n > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("too many tags in one record");
  auto grown = std::make_unique_for_overwrite<Packed[]>(n);
  if (size_ != 0) std::memcpy(grown.get(), data_.get(), std::size_t{size_} * sizeof(Packed));
  data_ = std::move(grown);
  capacity_ = static_cast<std::uint32_t>(n);
}

void TagList::PackedTags::insert(std::size_t i, Packed p) {
  if (size_ == capacity_) reserve(capacity_ < 4 ? 4 : std::size_t{capacity_} * 2);
  std::memmove(data_.get() + i + 1, data_.get() + i, (size_ - i) * sizeof(Packed));
  data_[i] = p;
  ++size_;
}

void TagList::PackedTags::erase(std::size_t i) {
  std::memmove(data_.get() + i, data_.get() + i + 1, (size_ - i - 1) * sizeof(Packed));
  --size_;
}

void TagList::PackedTags::assign(const Packed* first, const Packed* last) {
  const auto n = static_cast<std::size_t>(last - first);
  if (n > capacity_) {
    size_ = 0;
    reserve(n);
  }
  if (n != 0) std::memcpy(data_.get(), first, n * sizeof(Packed));
  size_ = static_cast<std::uint32_t>(n);
}

std::string formatCode(int code) {
  std::string text = std::to_string(code);
  if (text.size() < 3) text.insert(0, 3 - text.size(), ' ');
  return text;
}

std::string_view standardCodeLine(int code) { return standardCode(code); }

std::string formatNumber(double value) {
  char buf[kMaxNumberText];
  return std::string(buf, formatInto(value, buf));
}

std::size_t formatNumberInto(char* out, double value) { return formatInto(value, out); }

// Numbers also forgive a carriage return left by a reader that split lines at line feeds only.
std::string_view trimmedNumber(std::string_view s) {
  s = trimBlanks(s);
  if (!s.empty() && s.back() == '\r') s = trimBlanks(s.substr(0, s.size() - 1));
  return s;
}

namespace {

// A plain decimal of at most 15 digits, as survey coordinates are written ("2561234.567", "-12.5", "300"):
// its digits as an integer are exact in a double, and so is the power of ten, so one division gives the
// correctly rounded value, the one a full reader gives too. Anything else is left to the full reader.
std::optional<double> plainDecimal(std::string_view s) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  std::size_t i = 0;
  const bool negative = !s.empty() && s.front() == '-';
  if (negative) ++i;
  std::uint64_t digits = 0;
  std::size_t count = 0;
  auto digit = [&] { return i < s.size() && s[i] >= '0' && s[i] <= '9'; };
  for (; digit(); ++i, ++count) digits = digits * 10 + static_cast<std::uint64_t>(s[i] - '0');
  if (count == 0) return std::nullopt;
  std::size_t fraction = 0;
  if (i < s.size() && s[i] == '.') {
    ++i;
    for (; digit(); ++i, ++fraction) digits = digits * 10 + static_cast<std::uint64_t>(s[i] - '0');
    if (fraction == 0) return std::nullopt;
  }
  if (i != s.size() || count + fraction > 15) return std::nullopt;
  const double v = static_cast<double>(digits) / kPowers[fraction];
  return negative ? -v : v;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
  text = trimmedNumber(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (const std::optional<double> plain = plainDecimal(text)) return plain;
  double v = 0.0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

std::optional<long long> parseInteger(std::string_view text) {
  text = trimmedNumber(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  long long v = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

}  // namespace dxf
