#include "host/dxf/FileBytes.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace dxf {

namespace {

// Closes the descriptor whatever way reading ends.
struct Descriptor {
  int fd;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

constexpr std::size_t kHugePage = std::size_t{2} << 20;

}  // namespace

FileBytes::FileBytes(FileBytes&& other) noexcept
    : text_(std::move(other.text_)),
      mapped_(std::exchange(other.mapped_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      length_(std::exchange(other.length_, 0)) {}

FileBytes& FileBytes::operator=(FileBytes&& other) noexcept {
  if (this != &other) {
    if (mapped_) ::munmap(mapped_, length_);
    text_ = std::move(other.text_);
    mapped_ = std::exchange(other.mapped_, nullptr);
    size_ = std::exchange(other.size_, 0);
    length_ = std::exchange(other.length_, 0);
  }
  return *this;
}

FileBytes::~FileBytes() {
  if (mapped_) ::munmap(mapped_, length_);
}

std::optional<FileBytes> FileBytes::read(const std::filesystem::path& path, std::size_t limit, std::string& error) {
  const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) {
    error = std::string("cannot be opened: ") + std::strerror(errno);
    return std::nullopt;
  }
  struct stat info {};
  if (::fstat(file.fd, &info) != 0 || info.st_size < 0) {
    error = "cannot be read";
    return std::nullopt;
  }
  const auto size = static_cast<std::size_t>(info.st_size);
  if (size > limit) {
    error = "is larger than the " + std::to_string(limit >> 20) + " MiB a drawing may have";
    return std::nullopt;
  }
  FileBytes bytes;
  if (size == 0) return bytes;
  // Whole huge pages, so that the system can back all of it with them.
  bytes.length_ = (size + kHugePage - 1) / kHugePage * kHugePage;
  void* memory = ::mmap(nullptr, bytes.length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    // No room for the drawing is a shortage of memory like any other, which the caller reports as such.
    if (errno == ENOMEM) throw std::bad_alloc();
    error = std::string("cannot be read: ") + std::strerror(errno);
    return std::nullopt;
  }
  bytes.mapped_ = static_cast<char*>(memory);
#ifdef MADV_HUGEPAGE
  ::madvise(memory, bytes.length_, MADV_HUGEPAGE);  // a hint: without huge pages it reads all the same
#endif
  // The size seen above: a file that shrinks meanwhile is refused, one that grows is read as it was.
  while (bytes.size_ < size) {
    const ssize_t n = ::read(file.fd, bytes.mapped_ + bytes.size_, size - bytes.size_);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      error = std::string("cannot be read: ") + std::strerror(errno);
      return std::nullopt;
    }
    if (n == 0) {
      error = "changed while it was read (it became shorter); open it again";
      return std::nullopt;
    }
    bytes.size_ += static_cast<std::size_t>(n);
  }
  return bytes;
}

}  // namespace dxf
