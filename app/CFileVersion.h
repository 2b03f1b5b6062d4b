// The version record of a language library, read from the file without loading it (see
// support/KoVersionRecord.h for where the record lives). A library without a readable record is not taken.
#pragma once

#include <string>

#include "support/KoVersionRecord.h"

class CFileVersion {
 public:
  // Reads the record of `path`; false when the file cannot be read or holds no complete record.
  bool Open(const std::wstring& path);
  void Close();
  bool IsValid() const { return valid_; }
  // Whether Open found a file at all (a missing file is a matter for the loader, not for the check).
  bool FileExists() const { return exists_; }
  // A value of the record ("FileVersion", "ProductName", ...); empty when the record lacks it.
  std::wstring QueryValue(const std::wstring& name) const;
  // Why the last Open failed, for the log.
  const std::string& Problem() const { return problem_; }

 private:
  KoVersionValues values_;
  bool valid_ = false;
  bool exists_ = false;
  std::string problem_;
};
