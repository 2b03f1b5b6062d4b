#include "host/dxf/TagList.h"

#include <charconv>
#include <cmath>

namespace dxf {

namespace {

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

}  // namespace

TagList::TagList(const TagList& other) : tags_(other.tags_), modified_(other.modified_) {
  // Texts the other list owns must be owned here too, or they would dangle when it goes away.
  for (Tag& t : tags_) {
    for (const std::string& s : other.owned_) {
      if (t.text.data() == s.data()) {
        t.text = own(s);
        break;
      }
    }
  }
}

TagList& TagList::operator=(const TagList& other) {
  if (this != &other) {
    TagList copy(other);
    *this = std::move(copy);
  }
  return *this;
}

std::optional<double> TagList::number(std::size_t i) const { return parseNumber(tags_[i].text); }

std::optional<long long> TagList::integer(std::size_t i) const { return parseInteger(tags_[i].text); }

std::optional<std::size_t> TagList::find(int code, std::size_t from) const {
  for (std::size_t i = from; i < tags_.size(); ++i)
    if (tags_[i].code == code) return i;
  return std::nullopt;
}

std::string_view TagList::own(std::string text) {
  owned_.push_front(std::move(text));
  return owned_.front();
}

void TagList::setNumber(std::size_t i, double value) { setText(i, formatNumber(value)); }

void TagList::setInteger(std::size_t i, long long value) { setText(i, std::to_string(value)); }

void TagList::setText(std::size_t i, std::string text) {
  tags_[i].text = own(std::move(text));
  modified_ = true;
}

void TagList::insert(std::size_t i, int code, std::string text) {
  tags_.insert(tags_.begin() + static_cast<std::ptrdiff_t>(i), Tag{code, {}, own(std::move(text))});
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
