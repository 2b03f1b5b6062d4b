#include "host/runtime/SharedObjectCheck.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <vector>

namespace host::runtime {
namespace {

#if INTPTR_MAX == INT64_MAX
using Ehdr = Elf64_Ehdr;
using Phdr = Elf64_Phdr;
using Shdr = Elf64_Shdr;
constexpr unsigned char kClass = ELFCLASS64;
#else
using Ehdr = Elf32_Ehdr;
using Phdr = Elf32_Phdr;
using Shdr = Elf32_Shdr;
constexpr unsigned char kClass = ELFCLASS32;
#endif

constexpr unsigned char kByteOrder = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;

// Whether [offset, offset + count * size) lies within a file of `fileSize` bytes, without overflow.
bool within(std::uint64_t offset, std::uint64_t count, std::uint64_t size, std::uint64_t fileSize) {
  if (offset > fileSize) return false;
  if (size != 0 && count > (fileSize - offset) / size) return false;
  return true;
}

class File {
 public:
  explicit File(const std::filesystem::path& path) : fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~File() {
    if (fd_ >= 0) ::close(fd_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  int fd() const { return fd_; }
  bool read(void* into, std::size_t size, std::uint64_t offset) const {
    return ::pread(fd_, into, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
  }

 private:
  int fd_;
};

}  // namespace

std::string checkSharedObject(const std::filesystem::path& path) {
  File file(path);
  if (file.fd() < 0) return std::string("cannot be read: ") + std::strerror(errno);
  struct stat st {};
  if (::fstat(file.fd(), &st) != 0) return std::string("cannot be read: ") + std::strerror(errno);
  if (!S_ISREG(st.st_mode)) return "is not a regular file";
  const auto size = static_cast<std::uint64_t>(st.st_size);

  Ehdr header{};
  if (!file.read(&header, sizeof header, 0)) return "is not a shared object: it is shorter than an ELF header";
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return "is not a shared object (no ELF header)";
  if (header.e_ident[EI_CLASS] != kClass || header.e_ident[EI_DATA] != kByteOrder)
    return "is a shared object for another kind of machine";
  if (header.e_type != ET_DYN) return "is not a shared object (an ELF file of another type)";
  if (header.e_phnum == 0 || header.e_phentsize != sizeof(Phdr))
    return "is not a usable shared object: it has no program headers";

  const std::string cut = "is cut short: ";
  if (!within(header.e_phoff, header.e_phnum, sizeof(Phdr), size)) return cut + "its program headers lie beyond its end";
  std::vector<Phdr> segments(header.e_phnum);
  if (!file.read(segments.data(), segments.size() * sizeof(Phdr), header.e_phoff))
    return cut + "its program headers cannot be read";
  for (const Phdr& p : segments)
    if (p.p_filesz > 0 && !within(p.p_offset, 1, p.p_filesz, size))
      return cut + "a segment reaches beyond its end";

  // Section headers are optional (a stripped file may lack them); where they are, they must be whole.
  if (header.e_shoff != 0 && header.e_shnum != 0) {
    if (header.e_shentsize != sizeof(Shdr) || !within(header.e_shoff, header.e_shnum, sizeof(Shdr), size))
      return cut + "its section headers lie beyond its end";
    std::vector<Shdr> sections(header.e_shnum);
    if (!file.read(sections.data(), sections.size() * sizeof(Shdr), header.e_shoff))
      return cut + "its section headers cannot be read";
    for (const Shdr& s : sections)
      if (s.sh_type != SHT_NOBITS && s.sh_size > 0 && !within(s.sh_offset, 1, s.sh_size, size))
        return cut + "a section lies beyond its end";
  }
  return {};
}

}  // namespace host::runtime
