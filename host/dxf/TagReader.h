// Splits an ASCII DXF file, held in one buffer, into group-code/value tags without copying anything, and
// checks each tag on the way: the code must be a known group code, and a value whose code calls for a
// number must be one. Errors name the line, so that a user can find the fault in a text editor.
#pragma once

#include "host/dxf/RepairLog.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace dxf {

// Limits of what is read. No line of a DXF that a CAD program writes comes near the line length (texts are
// cut into chunks of 250 bytes, binary data into 254 hex digits); the file size keeps every offset into
// the buffer within 32 bits.
inline constexpr std::size_t kMaxLineLength = 8192;
inline constexpr std::size_t kMaxFileSize = (std::size_t{1} << 31) - 1;

// What kind of value a group code carries, after the DXF reference's table of group code ranges.
enum class ValueKind { Unknown, Text, Real, Integer };
ValueKind valueKind(int code);

struct RawTag {
  int code = 0;
  std::string_view codeText;  // the code line without its line ending
  std::string_view text;      // the value line without its line ending
  const char* start = nullptr;  // first byte of the code line
  std::size_t line = 0;         // 1-based line number of the code line
};

// Why a file is not a text DXF at all, judged from its first bytes; nothing when it may be one.
std::optional<std::string> refuseFormat(std::string_view bytes);

class TagReader {
 public:
  // `from` skips a leading byte order mark or the like; lines are still counted from the file's start.
  // With `repairs` the reader recovers instead of failing: it skips lines that hold no group code (or are
  // too long, or hold NUL bytes), drops tags with an unknown code or a value that is no number, and
  // notes each of these repairs.
  explicit TagReader(std::string_view buffer, std::size_t from = 0, RepairLog* repairs = nullptr);

  // The tag at the current position, read on demand; nothing at the end of the buffer or after an error.
  const RawTag* peek();
  // Moves past the tag peek() returned.
  void advance() { ready_ = false; }

  bool failed() const { return !error_.empty(); }
  const std::string& error() const { return error_; }  // "line 17: ..."
  // Where the next unread tag starts (the end of the buffer when all are read).
  const char* position() const { return ready_ ? current_.start : buffer_.data() + pos_; }
  std::size_t line() const { return ready_ ? current_.line : line_; }

  // Records an error found by a layer above at the given line.
  void fail(std::size_t line, std::string_view message);

  // How many lines recovery skipped so far: a record whose bytes hold one is no longer its file text.
  std::size_t skipped() const { return skipped_; }

 private:
  enum class Line { Ok, End, Bad };
  // The next line without its ending; Bad when the line is too long or holds a NUL byte (then the
  // reader has failed unless it recovers).
  Line nextLine(std::string_view& out);
  bool read();
  // In recovery notes the repair and answers true; otherwise fails at `line` and answers false.
  bool skip(std::size_t line, std::string_view repair, std::string_view message, std::size_t lines);

  std::string_view buffer_;
  std::size_t pos_ = 0;
  std::size_t line_ = 1;  // number of the next line to read
  std::size_t firstNul_;  // offset of the first NUL byte not yet passed, the buffer's size when there is none
  RawTag current_;
  bool ready_ = false;
  std::string error_;
  RepairLog* repairs_;
  std::size_t skipped_ = 0;
};

}  // namespace dxf
