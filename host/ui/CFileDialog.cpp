#include "sdk/ui/CFileDialog.h"

#include "host/ui/UiBackend.h"
#include "host/ui/UiThread.h"

namespace {

std::size_t nameStart(const std::wstring& path) {
  const auto slash = path.find_last_of(L"/\\");
  return slash == std::wstring::npos ? 0 : slash + 1;
}

}  // namespace

CFileDialog::CFileDialog(bool openFileDialog, const std::wstring& defaultExt, const std::wstring& fileName,
                         unsigned flags, const std::wstring& filter, CWnd*)
    : open_(openFileDialog), defaultExt_(defaultExt), filter_(filter), flags_(flags), path_(fileName) {
  // The default extension may be given with or without its dot.
  if (!defaultExt_.empty() && defaultExt_.front() == L'.') defaultExt_.erase(0, 1);
}

int CFileDialog::DoModal() {
  bool chosen = false;
  std::wstring path;
  host::ui::runOnUiThread([&] { chosen = host::ui::backend().fileDialog(*this, path); });
  if (!chosen) return IDCANCEL;
  if (!defaultExt_.empty() && path.find(L'.', nameStart(path)) == std::wstring::npos) path += L"." + defaultExt_;
  path_ = path;
  return IDOK;
}

std::wstring CFileDialog::GetFileName() const { return path_.substr(nameStart(path_)); }

std::wstring CFileDialog::GetFileExt() const {
  const std::wstring name = GetFileName();
  const auto dot = name.rfind(L'.');
  return dot == std::wstring::npos ? std::wstring() : name.substr(dot + 1);
}

std::wstring CFileDialog::GetFileTitle() const {
  const std::wstring name = GetFileName();
  return name.substr(0, name.rfind(L'.'));
}
