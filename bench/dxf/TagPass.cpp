#include "TagPass.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace bench {

namespace {

// One line without its terminator, and the terminator ("\n", "\r\n" or nothing at the end of the file).
struct Line {
  std::string_view text;
  std::string_view end;
};

bool nextLine(const char*& at, const char* stop, Line& line) {
  if (at >= stop) return false;
  const char* nl = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(stop - at)));
  const char* textEnd = nl ? nl : stop;
  const char* lineEnd = nl ? nl + 1 : stop;
  if (textEnd > at && textEnd[-1] == '\r') --textEnd;
  line.text = std::string_view(at, static_cast<std::size_t>(textEnd - at));
  line.end = std::string_view(textEnd, static_cast<std::size_t>(lineEnd - textEnd));
  at = lineEnd;
  return true;
}

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// True when the line, blanks around it aside, is one number and nothing else.
template <class Number>
bool readsWhole(std::string_view line, Number& value) {
  const std::string_view text = trimmed(line);
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  return !text.empty() && read.ec == std::errc() && read.ptr == text.data() + text.size();
}

bool readWhole(const std::filesystem::path& path, std::unique_ptr<char[]>& bytes, std::size_t& size,
               std::string& error) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    error = path.string() + ": " + std::strerror(errno);
    return false;
  }
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    error = path.string() + ": " + std::strerror(errno);
    ::close(fd);
    return false;
  }
  size = static_cast<std::size_t>(st.st_size);
  bytes = std::make_unique_for_overwrite<char[]>(size);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::read(fd, bytes.get() + done, size - done);
    if (n <= 0) {
      if (n < 0 && errno == EINTR) continue;
      error = path.string() + (n == 0 ? ": file shrank while it was read" : ": " + std::string(std::strerror(errno)));
      ::close(fd);
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  ::close(fd);
  return true;
}

bool writeWhole(const std::filesystem::path& path, const char* bytes, std::size_t size, std::string& error) {
  const std::filesystem::path temporary = path.string() + ".tagpass-" + std::to_string(::getpid());
  const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0) {
    error = temporary.string() + ": " + std::strerror(errno);
    return false;
  }
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::write(fd, bytes + done, size - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += static_cast<std::size_t>(n);
  }
  const bool ok = done == size && ::fsync(fd) == 0;
  if (!ok) error = path.string() + ": " + std::strerror(errno);
  ::close(fd);
  if (ok && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
  if (ok) error = path.string() + ": " + std::strerror(errno);
  std::remove(temporary.c_str());
  return false;
}

}  // namespace

bool shiftEveryCoordinate(const std::filesystem::path& in, const std::filesystem::path& out,
                          const std::array<double, 3>& offset, TagPassCount& count, std::string& error) {
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
  if (!readWhole(in, bytes, size, error)) return false;
  // A shifted number is rarely longer than the one it replaces; the slack covers the rest.
  std::string output;
  output.reserve(size + size / 16 + 64);
  const char* at = bytes.get();
  const char* const stop = at + size;
  std::size_t lineNumber = 0;
  const auto fail = [&](const char* what) {
    error = in.string() + ": line " + std::to_string(lineNumber) + ": " + what;
    return false;
  };
  Line code, value;
  count = {};
  while (nextLine(at, stop, code)) {
    ++lineNumber;
    int group = 0;
    if (!readsWhole(code.text, group)) return fail("group code is not a number");
    if (!nextLine(at, stop, value)) return fail("group code without a value");
    ++lineNumber;
    ++count.tags;
    output.append(code.text).append(code.end);
    if (group >= 10 && group <= 38) {
      double v = 0;
      if (!readsWhole(value.text, v)) return fail("coordinate is not a number");
      char text[32];
      const auto written = std::to_chars(text, text + sizeof text, v + offset[static_cast<std::size_t>(group / 10 - 1)]);
      output.append(text, written.ptr).append(value.end);
      ++count.shifted;
    } else {
      output.append(value.text).append(value.end);
    }
  }
  bytes.reset();  // the input is no longer needed while the file is written
  return writeWhole(out, output.data(), output.size(), error);
}

}  // namespace bench
