// Writing entities and records back: untouched ones as the bytes they were read from, changed or new ones
// tag by tag, each tag's code line as the file had it (or right-aligned in three columns, as CAD programs
// write it, for a tag the program made). The unchanged tags of a changed record that stand one after the
// other in the file are copied as one piece.
#pragma once

#include "host/dxf/BinaryTags.h"
#include "host/dxf/Entity.h"

#include <cstring>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace dxf {

// Collects output in a buffer; with a file descriptor the buffer goes to the file whenever it fills.
class Sink {
 public:
  explicit Sink(int fd = -1) : fd_(fd) {}
  void write(std::string_view bytes) {
    if (bytes.empty()) return;  // an empty view may have no data at all, which memcpy must not see
    if (bytes.size() > buffer_.size() - used_) makeRoom(bytes.size());
    std::memcpy(buffer_.data() + used_, bytes.data(), bytes.size());
    used_ += bytes.size();
  }
  // A tag: its code line and its value line, each followed by the line ending.
  void writeTag(std::string_view code, std::string_view value, std::string_view eol) {
    const std::string_view codeEnd = lineEnd(code, eol), valueEnd = lineEnd(value, eol);
    const std::size_t n = code.size() + codeEnd.size() + value.size() + valueEnd.size();
    if (n > buffer_.size() - used_) makeRoom(n);
    char* p = buffer_.data() + used_;
    for (std::string_view part : {code, codeEnd, value, valueEnd}) {
      if (part.empty()) continue;  // an empty view may have no data at all
      std::memcpy(p, part.data(), part.size());
      p += part.size();
    }
    used_ += n;
  }
  // A reader takes one carriage return before the line feed as part of the line ending, so a line whose
  // text itself ends in one (a file with mixed line endings) is ended with CR LF to keep that character.
  static std::string_view lineEnd(std::string_view text, std::string_view eol) {
    return !text.empty() && text.back() == '\r' ? std::string_view("\r\n") : eol;
  }
  // A tag whose value is a number, spelled straight into the buffer.
  void writeNumberTag(std::string_view code, double value, std::string_view eol) {
    const std::size_t n = code.size() + kMaxNumberText + 4;  // two line endings of at most two bytes
    if (n > buffer_.size() - used_) makeRoom(n);
    char* p = buffer_.data() + used_;
    std::memcpy(p, code.data(), code.size());
    p += code.size();
    const std::string_view codeEnd = lineEnd(code, eol);
    std::memcpy(p, codeEnd.data(), codeEnd.size());
    p += codeEnd.size();
    p += formatNumberInto(p, value);
    std::memcpy(p, eol.data(), eol.size());
    p += eol.size();
    used_ = static_cast<std::size_t>(p - buffer_.data());
  }
  // Writes what is buffered to the file; false (with errorNumber() set) when the file refused it.
  bool flush();
  bool failed() const { return errno_ != 0; }
  int errorNumber() const { return errno_; }
  // In memory mode: what is written so far, and starting again with the room kept.
  std::string_view view() const { return {buffer_.data(), used_}; }
  void clear() { used_ = 0; }
  // In memory mode: everything written, handed over.
  std::string take() {
    buffer_.resize(used_);
    used_ = 0;
    return std::move(buffer_);
  }
  void reserve(std::size_t n) {
    if (n > buffer_.size()) buffer_.resize(n);
  }

 private:
  void makeRoom(std::size_t n);

  static constexpr std::size_t kChunk = std::size_t{1} << 20;
  int fd_;
  int errno_ = 0;
  std::string buffer_;  // its size is the room; used_ bytes of it are written
  std::size_t used_ = 0;
};

// How the tags the program wrote are spelled: in the text form with the file's line ending, or in the
// binary form with the file's width of group codes.
struct TagStyle {
  std::string eol = "\n";
  std::optional<CodeWidth> binary;
};

// Writes the entity with its children; an erased entity writes nothing.
void writeEntity(Sink& out, const Entity& entity, const TagStyle& style);

// Writes the records one after the other. Many records are spelled on two cores: a helper thread writes
// every other stretch of them into a buffer of its own while this thread writes the others, and the
// stretches go out in file order, so the bytes are exactly those of writing one record after the other.
void writeRecords(Sink& out, const std::deque<Entity>& records, const TagStyle& style);

}  // namespace dxf
