// The process-wide parts of the extended list: the language it speaks, the version check of the list control,
// and the sort context.
#include <cstdio>
#include <cstdlib>

#include "sdk/ui/MessageBox.h"
#include "ui/CListCtrlEx.h"
#include "ui/ListCtrlExLanguage.h"
#include "ui/ListCtrlExResourceIds.h"

namespace {

CListCtrlEx::LanguageTest gIsGerman = nullptr;
CListCtrlEx::ResourceSource gResources = nullptr;
bool gControlsChecked = false;

constexpr unsigned kRequiredVersion = 5u * 65536u;
constexpr const wchar_t* kOutdatedFallback = L"Some System DLL\u00B4s are outdated. Please contact Halvern AG";

}  // namespace

CListResourceScope::CListResourceScope() : m_previous(AfxGetResourceHandle()) {
  if (gResources != nullptr)
    if (ui::ResourceHandle handle = gResources()) AfxSetResourceHandle(handle);
}

CListResourceScope::~CListResourceScope() { AfxSetResourceHandle(m_previous); }

void CListCtrlEx::SetLanguage(LanguageTest isGerman, ResourceSource resources) {
  gIsGerman = isGerman;
  gResources = resources;
}

CListCtrlEx::LanguageTest CListCtrlEx::GetLanguageTest() { return gIsGerman; }
CListCtrlEx::ResourceSource CListCtrlEx::GetResourceSource() { return gResources; }

bool CListCtrlEx::LanguageIsGerman() { return gIsGerman == nullptr || gIsGerman(); }

void CListCtrlEx::CheckCommonControls() {
  if (gControlsChecked) return;
  gControlsChecked = true;
  VerifyCommonControls();
}

bool CListCtrlEx::VerifyCommonControls() {
  if (AfxGetCommonControlsVersion() >= kRequiredVersion) return true;
  std::wstring text;
  {
    CListResourceScope resources;
    AfxLoadString(LanguageIsGerman() ? IDS_LIST_OUTDATED_GERMAN : IDS_LIST_OUTDATED_OTHER, text);
  }
  if (text.empty()) text = kOutdatedFallback;
  if (AfxMessageBox(text, MB_ABORTRETRYIGNORE | MB_ICONEXCLAMATION) == IDIGNORE) return true;
  // The host goes with the module: nothing is saved, as when the process is ended from outside.
  std::fflush(nullptr);
  std::_Exit(0);
}
