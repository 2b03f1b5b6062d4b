// A drawing file's bytes in memory, which every record of the drawing points into for as long as it is open.
//
// Where the system allows, the file is mapped under a read lease instead of read: the bytes then come
// straight from the page cache, without being copied or the memory zero-filled first. The drawing keeps
// pointing into them for hours, though, and another program may cut the file short (which would end the host
// with SIGBUS at the next save) or write over it in place (which would change the drawing under the store).
// The lease makes such a program wait until we are told: on that signal the mapping is replaced, at the same
// address, by a private copy of the bytes, and the lease is given back. So the drawing never changes, and
// the other program waits a few milliseconds.
//
// Where no lease can be had (a file of another user, a network share, a file someone has open for writing,
// a signal handler already taken), the file is read into memory of our own as before: in huge pages where
// the system offers them (a few page faults instead of one per 4 KiB).
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace dxf {

class FileBytes {
 public:
  FileBytes() = default;
  explicit FileBytes(std::string bytes) : text_(std::move(bytes)) {}
  FileBytes(FileBytes&& other) noexcept;
  FileBytes& operator=(FileBytes&& other) noexcept;
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;
  ~FileBytes();

  // Reads the whole file, which may hold at most `limit` bytes. On failure returns nothing and sets
  // `error` to what went wrong, without the file's name ("cannot be opened: No such file or directory");
  // throws std::bad_alloc where there is no memory for it.
  static std::optional<FileBytes> read(const std::filesystem::path& path, std::size_t limit, std::string& error);

  std::string_view view() const { return mapped_ ? std::string_view(mapped_, size_) : std::string_view(text_); }
  std::size_t size() const { return view().size(); }
  // True while the bytes are the file's own pages under a lease (for tests: false after a private copy was
  // made, or where the file was read).
  bool leased() const;

 private:
  void release();

  std::string text_;         // bytes handed over in memory
  char* mapped_ = nullptr;   // or a mapping (anonymous, or the file's under a lease), holding size_ bytes
  std::size_t size_ = 0;
  std::size_t length_ = 0;   // of the mapping
  int lease_ = -1;           // the slot of a leased mapping in the table the lease-break signal reads
};

}  // namespace dxf
