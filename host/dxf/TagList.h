// The bottom layer of the DXF store: one entity, table record or object as its ordered group-code/value tags.
//
// Values are kept as the text they had in the file, so that a value nobody touched is written back byte
// for byte. A number that is changed is stored as the shortest text that reads back to the same double.
#pragma once

#include <cstddef>
#include <forward_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

struct Tag {
  int code = 0;
  std::string_view codeText;  // the code line as read ("  10"); empty for tags made by the program
  std::string_view text;      // the value line without its line ending
};

class TagList {
 public:
  TagList() = default;
  TagList(const TagList& other);
  TagList& operator=(const TagList& other);
  TagList(TagList&&) noexcept = default;
  TagList& operator=(TagList&&) noexcept = default;

  std::size_t size() const { return tags_.size(); }
  bool empty() const { return tags_.empty(); }
  const Tag& operator[](std::size_t i) const { return tags_[i]; }
  int code(std::size_t i) const { return tags_[i].code; }
  std::string_view text(std::size_t i) const { return tags_[i].text; }
  auto begin() const { return tags_.begin(); }
  auto end() const { return tags_.end(); }

  // The value read as a number; nothing when the text is not one.
  std::optional<double> number(std::size_t i) const;
  std::optional<long long> integer(std::size_t i) const;

  // Index of the first tag with this code at or after `from`.
  std::optional<std::size_t> find(int code, std::size_t from = 0) const;

  // Appends a tag whose texts live elsewhere (the document's file buffer): used by the reader.
  void appendRaw(int code, std::string_view codeText, std::string_view text) {
    tags_.push_back(Tag{code, codeText, text});
  }
  void reserve(std::size_t n) { tags_.reserve(n); }

  void setNumber(std::size_t i, double value);
  void setInteger(std::size_t i, long long value);
  void setText(std::size_t i, std::string text);
  void insert(std::size_t i, int code, std::string text);
  void insertNumber(std::size_t i, int code, double value);
  void erase(std::size_t i);

  // True once any tag was changed, inserted or erased since the list was read.
  bool modified() const { return modified_; }

 private:
  std::string_view own(std::string text);

  std::vector<Tag> tags_;
  std::forward_list<std::string> owned_;  // texts made by the program; nodes never move
  bool modified_ = false;
};

// The shortest text that reads back to exactly `value`, always with a decimal point or an exponent
// so that other readers take it for a real ("2561234.0", "0.1", "1e-300").
std::string formatNumber(double value);

// Reads a DXF number: blanks around it are allowed, anything else is not.
std::optional<double> parseNumber(std::string_view text);
std::optional<long long> parseInteger(std::string_view text);

}  // namespace dxf
