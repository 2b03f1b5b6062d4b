#include "app/CFileVersion.h"

#include <sys/stat.h>

#include "support/KoConvert.h"

bool CFileVersion::Open(const std::wstring& path) {
  Close();
  const std::string file = KoWideToUtf8(path);
  struct stat info {};
  exists_ = ::stat(file.c_str(), &info) == 0;
  std::string section;
  if (!KoReadElfSection(file, kKoVersionSection, section, problem_)) return false;
  std::optional<KoVersionValues> values = KoParseVersionRecord(section);
  if (!values || values->count("FileVersion") == 0) {
    problem_ = "the version record is incomplete";
    return false;
  }
  values_ = std::move(*values);
  valid_ = true;
  return true;
}

void CFileVersion::Close() {
  values_.clear();
  valid_ = false;
  exists_ = false;
  problem_.clear();
}

std::wstring CFileVersion::QueryValue(const std::wstring& name) const {
  auto it = values_.find(KoWideToUtf8(name));
  return it != values_.end() ? KoUtf8ToWide(it->second) : std::wstring();
}
