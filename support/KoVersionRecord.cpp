#include "support/KoVersionRecord.h"

#include <elf.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>

namespace {

// Language libraries are small; anything far larger is not one and is not read into memory.
constexpr std::uint64_t kMaxFileSize = 256ull << 20;

// Reads integers of the file's own byte order from the file image, refusing anything outside it.
class ElfImage {
 public:
  ElfImage(std::string_view bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

  bool read(std::uint64_t offset, std::size_t size, std::uint64_t& value) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) return false;
    value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const auto byte = static_cast<unsigned char>(bytes_[offset + (bigEndian_ ? i : size - 1 - i)]);
      value = (value << 8) | byte;
    }
    return true;
  }

  bool slice(std::uint64_t offset, std::uint64_t size, std::string_view& out) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) return false;
    out = bytes_.substr(offset, size);
    return true;
  }

 private:
  std::string_view bytes_;
  bool bigEndian_;
};

// Where the fields of the ELF and section headers sit, for the 32- and the 64-bit layout.
struct ElfLayout {
  std::size_t word;        // size of addresses and offsets
  std::size_t shoff;       // e_shoff
  std::size_t shentsize;   // e_shentsize (e_shnum and e_shstrndx follow it)
  std::size_t minShEntry;  // size of one section header
  std::size_t shName = 0, shOffset, shSize;
};

constexpr ElfLayout kElf32{4, 0x20, 0x2E, sizeof(Elf32_Shdr), 0, 0x10, 0x14};
constexpr ElfLayout kElf64{8, 0x28, 0x3A, sizeof(Elf64_Shdr), 0, 0x18, 0x20};

bool findSection(std::string_view file, std::string_view wanted, std::string& contents, std::string& error) {
  if (file.size() < EI_NIDENT || std::memcmp(file.data(), ELFMAG, SELFMAG) != 0) {
    error = "not an ELF file";
    return false;
  }
  const unsigned char elfClass = static_cast<unsigned char>(file[EI_CLASS]);
  const unsigned char order = static_cast<unsigned char>(file[EI_DATA]);
  if ((elfClass != ELFCLASS32 && elfClass != ELFCLASS64) || (order != ELFDATA2LSB && order != ELFDATA2MSB)) {
    error = "unknown ELF class or byte order";
    return false;
  }
  const ElfLayout& l = elfClass == ELFCLASS64 ? kElf64 : kElf32;
  const ElfImage image(file, order == ELFDATA2MSB);
  std::uint64_t shoff = 0, entsize = 0, count = 0, names = 0;
  if (!image.read(l.shoff, l.word, shoff) || !image.read(l.shentsize, 2, entsize) ||
      !image.read(l.shentsize + 2, 2, count) || !image.read(l.shentsize + 4, 2, names)) {
    error = "the ELF header is cut short";
    return false;
  }
  if (count == 0 || entsize < l.minShEntry || names >= count) {
    error = "the file has no section table";
    return false;
  }
  auto header = [&](std::uint64_t index, std::uint64_t& name, std::uint64_t& offset, std::uint64_t& size) {
    const std::uint64_t at = shoff + index * entsize;
    if (shoff > file.size() || index * entsize > file.size()) return false;
    return image.read(at + l.shName, 4, name) && image.read(at + l.shOffset, l.word, offset) &&
           image.read(at + l.shSize, l.word, size);
  };
  std::uint64_t ignored = 0, namesOffset = 0, namesSize = 0;
  std::string_view nameTable;
  if (!header(names, ignored, namesOffset, namesSize) || !image.slice(namesOffset, namesSize, nameTable)) {
    error = "the section table is cut short or damaged";
    return false;
  }
  for (std::uint64_t i = 0; i < count; ++i) {
    std::uint64_t name = 0, offset = 0, size = 0;
    if (!header(i, name, offset, size)) {
      error = "the section table is cut short or damaged";
      return false;
    }
    if (name >= nameTable.size()) continue;
    const std::string_view rest = nameTable.substr(name);
    if (rest.substr(0, std::min(rest.find('\0'), rest.size())) != wanted) continue;
    std::string_view data;
    if (!image.slice(offset, size, data)) {
      error = "the section lies beyond the end of the file";
      return false;
    }
    contents.assign(data);
    return true;
  }
  error = "the file has no section " + std::string(wanted);
  return false;
}

}  // namespace

std::optional<KoVersionValues> KoParseVersionRecord(std::string_view bytes) {
  auto next = [&bytes](std::string_view& text) {
    const std::size_t end = bytes.find('\0');
    if (end == std::string_view::npos) return false;
    text = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
    return true;
  };
  std::string_view marker;
  if (!next(marker) || marker != kKoVersionMarker) return std::nullopt;
  KoVersionValues values;
  for (;;) {
    std::string_view name, value;
    if (!next(name)) return std::nullopt;
    if (name.empty()) break;
    if (!next(value) || !values.emplace(name, value).second) return std::nullopt;
  }
  if (values.empty()) return std::nullopt;
  return values;
}

bool KoReadElfSection(const std::string& path, std::string_view section, std::string& contents,
                      std::string& error) {
  contents.clear();
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = std::strerror(errno != 0 ? errno : ENOENT);
    return false;
  }
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  if (size < 0 || static_cast<std::uint64_t>(size) > kMaxFileSize) {
    error = size < 0 ? "the file cannot be read" : "the file is too large for a library";
    return false;
  }
  std::string file(static_cast<std::size_t>(size), '\0');
  in.seekg(0);
  if (!in.read(file.data(), size)) {
    error = "the file cannot be read";
    return false;
  }
  return findSection(file, section, contents, error);
}
