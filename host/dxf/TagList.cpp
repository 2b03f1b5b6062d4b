#include "host/dxf/TagList.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace dxf {

namespace {

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

std::int16_t narrowCode(int code) {
  if (code < std::numeric_limits<std::int16_t>::min()) return std::numeric_limits<std::int16_t>::min();
  if (code > std::numeric_limits<std::int16_t>::max()) return std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(code);
}

}  // namespace

TagList::TagList(const TagList& other)
    : tags_(other.tags_),
      base_(other.base_),
      own_(other.own_ ? std::make_unique<std::string>(*other.own_) : nullptr),
      modified_(other.modified_) {}

TagList& TagList::operator=(const TagList& other) {
  if (this != &other) {
    TagList copy(other);
    *this = std::move(copy);
  }
  return *this;
}

std::string_view TagList::text(std::size_t i) const {
  const Packed& p = tags_[i];
  const char* start = (p.flags & kOwned) ? own_->data() : base_;
  return {start + p.offset, p.length};
}

std::string_view TagList::codeText(std::size_t i) const {
  const Packed& p = tags_[i];
  if (p.codeLength == 0) return {};
  if (p.flags & kOwned) return {own_->data() + p.offset - p.codeLength, p.codeLength};
  const std::ptrdiff_t lineEnd = (p.flags & kCrLf) ? 2 : 1;
  return {base_ + p.offset - lineEnd - p.codeLength, p.codeLength};
}

void TagList::appendRaw(int code, std::string_view codeText, std::string_view text) {
  if (base_ == nullptr) base_ = text.data();
  const std::ptrdiff_t offset = text.data() - base_;
  if (offset < std::numeric_limits<std::int32_t>::min() || offset > std::numeric_limits<std::int32_t>::max() ||
      text.size() > std::numeric_limits<std::uint32_t>::max()) {
    // Too far from the rest of the record to be addressed: keep a copy instead.
    tags_.push_back(packOwned(code, text));
    return;
  }
  Packed p{static_cast<std::int32_t>(offset), static_cast<std::uint32_t>(text.size()), narrowCode(code), 0, 0};
  // The code line is kept only where it stands right before the value line, as it does in a file.
  const std::ptrdiff_t gap = text.data() - (codeText.data() + codeText.size());
  if (!codeText.empty() && codeText.size() <= 255 && (gap == 1 || gap == 2)) {
    p.codeLength = static_cast<std::uint8_t>(codeText.size());
    if (gap == 2) p.flags |= kCrLf;
  }
  tags_.push_back(p);
}

TagList::Packed TagList::packOwned(int code, std::string_view text) {
  if (!own_) own_ = std::make_unique<std::string>();
  Packed p{static_cast<std::int32_t>(own_->size()), static_cast<std::uint32_t>(text.size()), narrowCode(code), 0,
           kOwned};
  own_->append(text);
  return p;
}

std::optional<double> TagList::number(std::size_t i) const { return parseNumber(text(i)); }

std::optional<long long> TagList::integer(std::size_t i) const { return parseInteger(text(i)); }

std::optional<std::size_t> TagList::find(int code, std::size_t from) const {
  for (std::size_t i = from; i < tags_.size(); ++i)
    if (tags_[i].code == code) return i;
  return std::nullopt;
}

void TagList::setNumber(std::size_t i, double value) { setText(i, formatNumber(value)); }

void TagList::setInteger(std::size_t i, long long value) { setText(i, std::to_string(value)); }

void TagList::setText(std::size_t i, std::string text) {
  // The code line moves along with the new value, so that a changed tag keeps the spelling of its code.
  const std::string_view code = codeText(i);
  if (!own_) own_ = std::make_unique<std::string>();
  own_->append(code);
  Packed fresh = packOwned(tags_[i].code, text);
  fresh.codeLength = static_cast<std::uint8_t>(code.size());
  tags_[i] = fresh;
  modified_ = true;
}

void TagList::insert(std::size_t i, int code, std::string text) {
  const Packed p = packOwned(code, text);
  tags_.insert(tags_.begin() + static_cast<std::ptrdiff_t>(i), p);
  modified_ = true;
}

void TagList::insertNumber(std::size_t i, int code, double value) { insert(i, code, formatNumber(value)); }

void TagList::erase(std::size_t i) {
  tags_.erase(tags_.begin() + static_cast<std::ptrdiff_t>(i));
  modified_ = true;
}

std::string formatNumber(double value) {
  if (value == 0.0) return "0.0";  // also folds -0.0, which some readers refuse
  char buf[64];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
  std::string s(buf, ec == std::errc() ? end : buf);
  if (std::isfinite(value) && s.find_first_of(".en") == std::string::npos) s += ".0";
  return s;
}

std::optional<double> parseNumber(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double v = 0.0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

std::optional<long long> parseInteger(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  long long v = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

}  // namespace dxf
