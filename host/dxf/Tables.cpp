#include "host/dxf/Tables.h"

#include <cstdlib>

namespace dxf {

namespace {

long long integerValue(const Entity& e, int code, long long fallback) {
  const auto i = e.tags.find(code);
  return i ? e.tags.integer(*i).value_or(fallback) : fallback;
}

// Index of the tag with `code`, inserted with `text` right after the tag with `after` (or the name) when
// the record lacks it.
std::size_t tagIndex(Entity& e, int code, int after, std::string_view text) {
  if (auto i = e.tags.find(code)) return *i;
  auto at = e.tags.find(after);
  if (!at) at = e.tags.find(2);
  const std::size_t pos = at ? *at + 1 : e.tags.size();
  e.tags.insert(pos, code, std::string(text));
  return pos;
}

}  // namespace

std::string_view Table::name() const { return trimBlanks(head.value(2)); }
std::string_view Table::handle() const { return trimBlanks(head.value(5)); }

std::string_view LayerRecord::rawName() const { return record_->value(2); }
std::string_view LayerRecord::handle() const { return trimBlanks(record_->value(5)); }
bool LayerRecord::frozen() const { return (integerValue(*record_, 70, 0) & 1) != 0; }
bool LayerRecord::locked() const { return (integerValue(*record_, 70, 0) & 4) != 0; }
bool LayerRecord::off() const { return integerValue(*record_, 62, 7) < 0; }
int LayerRecord::color() const { return static_cast<int>(std::llabs(integerValue(*record_, 62, 7))); }
std::string_view LayerRecord::rawLinetype() const { return record_->value(6, "CONTINUOUS"); }

void LayerRecord::setFlag(int bit, bool on) {
  const long long flags = integerValue(*record_, 70, 0);
  const long long wanted = on ? (flags | bit) : (flags & ~static_cast<long long>(bit));
  const std::size_t i = tagIndex(*record_, 70, 2, "0");
  if (wanted != flags || record_->tags.integer(i) != wanted) record_->tags.setInteger(i, wanted);
}

void LayerRecord::setFrozen(bool on) { setFlag(1, on); }
void LayerRecord::setLocked(bool on) { setFlag(4, on); }

void LayerRecord::setOff(bool on) {
  const long long c = color();
  const long long wanted = on ? -c : c;
  const std::size_t i = tagIndex(*record_, 62, 70, "7");
  if (record_->tags.integer(i) != wanted) record_->tags.setInteger(i, wanted);
}

void LayerRecord::setColor(int index) {
  const long long wanted = off() ? -std::llabs(index) : std::llabs(index);
  const std::size_t i = tagIndex(*record_, 62, 70, "7");
  if (record_->tags.integer(i) != wanted) record_->tags.setInteger(i, wanted);
}

void LayerRecord::setRawLinetype(std::string_view name) {
  const std::size_t i = tagIndex(*record_, 6, 62, name);
  if (record_->tags.text(i) != name) record_->tags.setText(i, std::string(name));
}

std::string_view LinetypeRecord::rawName() const { return record_->value(2); }
std::string_view LinetypeRecord::handle() const { return trimBlanks(record_->value(5)); }

}  // namespace dxf
