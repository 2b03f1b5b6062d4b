// A drawing file's bytes in memory, which every record of the drawing points into for as long as it is open.
//
// The file is read, not mapped. A mapping would spare one copy, but the drawing keeps pointing into the
// buffer for hours: a program that truncates the file meanwhile would end the host with SIGBUS at the next
// save (MAP_PRIVATE does not help: pages not yet copied still come from the file), and one that rewrites
// the file in place would change the drawing under the store. Catching SIGBUS would need a process-wide
// signal handler in a library. Reading costs one copy, into memory that is not zero-filled first, in
// huge pages where the system offers them (a few page faults instead of one per 4 KiB).
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

 private:
  std::string text_;         // bytes handed over in memory
  char* mapped_ = nullptr;   // or memory of our own (anonymous, page-aligned), holding size_ bytes
  std::size_t size_ = 0;
  std::size_t length_ = 0;   // of the mapping
};

}  // namespace dxf
