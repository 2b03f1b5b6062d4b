#pragma once
// The version record of a shared library, readable without loading the library.
//
// Windows keeps a file's version in a resource that Explorer (and the suite's own language check) reads
// straight from the file. The counterpart here is a record in a section of its own, ".ko_version", of the
// ELF file: the dynamic loader ignores it, and reading it needs neither dlopen nor running any of the
// library's code, so a damaged or foreign file is judged before it is loaded.
//
// Layout of the section: the marker "KoVersionRecord" and a NUL, then name/value pairs, each as text ended
// by a NUL ("FileVersion\0" "1.0.0\0"), then an empty name. Names and values are UTF-8.
// KO_VERSION_RECORD writes such a section into the library that is being compiled:
//
//   KO_VERSION_RECORD(KO_VERSION_VALUE("FileVersion", "1.0.0") KO_VERSION_VALUE("ProductName", "..."));

#include <map>
#include <optional>
#include <string>
#include <string_view>

inline constexpr const char* kKoVersionSection = ".ko_version";
inline constexpr std::string_view kKoVersionMarker = "KoVersionRecord";

#define KO_VERSION_VALUE(name, value) name "\0" value "\0"
// The literal's own terminating NUL is the empty name that ends the record.
#define KO_VERSION_RECORD(values)                                                                            \
  extern "C" __attribute__((section(".ko_version"), used, visibility("hidden"))) const char kKoVersionRecord[] = \
      "KoVersionRecord\0" values

using KoVersionValues = std::map<std::string, std::string>;

// The pairs of a record; nothing when the bytes are not a complete record (no marker, a pair cut short,
// no end, a name twice) or hold no pair at all.
std::optional<KoVersionValues> KoParseVersionRecord(std::string_view bytes);

// The contents of the named section of an ELF file (32 or 64 bit, either byte order). False, with `error`
// saying why, when the file cannot be read, is not ELF, is cut short or damaged, or has no such section.
bool KoReadElfSection(const std::string& path, std::string_view section, std::string& contents,
                      std::string& error);
