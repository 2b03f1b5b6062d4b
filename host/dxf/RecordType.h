// The text of a record's 0 tag ("LINE", "VERTEX", "SECTION").
//
// A drawing holds millions of records but only a few dozen different types, so each distinct text is kept
// once for the life of the program and a record holds a view of it: half the room of a string, and the
// view stays valid when the record is copied out of its drawing or outlives it.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace dxf {

class RecordType {
 public:
  RecordType() = default;
  RecordType(std::string_view text) : text_(intern(text)) {}  // NOLINT: a type is written as its text
  RecordType(const char* text) : RecordType(std::string_view(text)) {}  // NOLINT
  RecordType(const std::string& text) : RecordType(std::string_view(text)) {}  // NOLINT

  std::string_view view() const { return text_; }
  operator std::string_view() const { return text_; }  // NOLINT
  bool empty() const { return text_.empty(); }

  // By text, not by address: a program that holds the store twice (statically and in a shared library) keeps
  // two sets of texts.
  friend bool operator==(const RecordType& a, const RecordType& b) { return a.text_ == b.text_; }
  friend bool operator==(const RecordType& a, std::string_view b) { return a.text_ == b; }
  friend bool operator==(const RecordType& a, const char* b) { return a.text_ == std::string_view(b); }
  friend std::ostream& operator<<(std::ostream& out, const RecordType& type) { return out << type.text_; }

 private:
  // The one kept copy of `text`; the same view for equal texts.
  static std::string_view intern(std::string_view text);
  std::string_view text_;
};

}  // namespace dxf
