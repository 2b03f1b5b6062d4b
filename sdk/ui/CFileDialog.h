// File open and save dialogs. The filter is the classic one: pairs of description and pattern separated by "|",
// ended by "||" ("Excel (*.csv)|*.csv|Text (*.txt)|*.txt||"). A chosen name without an extension gets the
// default extension.
#pragma once

#include <string>

#include "sdk/ui/UiTypes.h"

class CWnd;

class CFileDialog {
 public:
  CFileDialog(bool openFileDialog, const std::wstring& defaultExt = {}, const std::wstring& fileName = {},
              unsigned flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, const std::wstring& filter = {},
              CWnd* parent = nullptr);
  virtual ~CFileDialog() = default;

  // IDOK with a chosen path, IDCANCEL when cancelled.
  virtual int DoModal();
  std::wstring GetPathName() const { return path_; }
  // The name with its extension, the extension without the dot, the name without it.
  std::wstring GetFileName() const;
  std::wstring GetFileExt() const;
  std::wstring GetFileTitle() const;

  bool IsOpenDialog() const { return open_; }
  const std::wstring& GetDefaultExt() const { return defaultExt_; }
  const std::wstring& GetFilter() const { return filter_; }
  unsigned GetFlags() const { return flags_; }

 private:
  bool open_;
  std::wstring defaultExt_;
  std::wstring filter_;
  unsigned flags_;
  std::wstring path_;
};
