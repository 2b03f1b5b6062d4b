// Writing entities and records back: untouched ones as the bytes they were read from, changed or new ones
// tag by tag, each tag's code line as the file had it (or right-aligned in three columns, as CAD programs
// write it, for a tag the program made).
#pragma once

#include "host/dxf/Entity.h"

#include <string>
#include <string_view>

namespace dxf {

// Collects output in a buffer; with a file descriptor the buffer goes to the file whenever it fills.
class Sink {
 public:
  explicit Sink(int fd = -1) : fd_(fd) {}
  void write(std::string_view bytes) {
    buffer_.append(bytes);
    if (fd_ >= 0 && buffer_.size() >= kChunk) flush();
  }
  // Writes what is buffered to the file; false (with errorNumber() set) when the file refused it.
  bool flush();
  bool failed() const { return errno_ != 0; }
  int errorNumber() const { return errno_; }
  // In memory mode: everything written.
  std::string& buffer() { return buffer_; }

 private:
  static constexpr std::size_t kChunk = std::size_t{1} << 20;
  int fd_;
  int errno_ = 0;
  std::string buffer_;
};

// Writes the entity with its children; an erased entity writes nothing.
void writeEntity(Sink& out, const Entity& entity, std::string_view eol);

}  // namespace dxf
