#include "app/ViraLanguage.h"

#include <cerrno>
#include <cstring>

#include "app/CFileVersion.h"
#include "app/CResourceDll.h"
#include "sdk/ui/MessageBox.h"
#include "support/KoConvert.h"
#include "support/KoSettings.h"

namespace {

// The loaded library stays for the life of the process; only the UI thread loads or reads it.
ui::ResourceHandle gLanguageLibrary = nullptr;
std::wstring gLanguageError;

// Every user of the suite reads this, whatever language is set, so it says it in all three.
constexpr const wchar_t* kLanguageWarning =
    L"A part of TRELLANOVA 10 will not switch into the desired language.\n"
    L"Ein Teil von TRELLANOVA 10 wird die Sprache nicht umschalten.\n"
    L"Une partie de TRELLANOVA 10 va pas changer dans la langue souhaitée";

void reportFailure(const std::wstring& path, const std::wstring& reason) {
  gLanguageError = L"Error Loading Language DLL " + path + L" \n" + reason + L"\n\n" + kLanguageWarning;
  AfxMessageBox(gLanguageError, MB_OK | MB_ICONERROR);
}

}  // namespace

bool ViraWriteLanguage(const std::wstring& code) {
  return KoWriteSetting(kViraLanguageKey, kViraLanguageValue, KoWideToUtf8(code));
}

std::wstring ViraReadLanguage() {
  std::optional<std::string> code = KoReadSetting(kViraLanguageKey, kViraLanguageValue);
  return code ? KoUtf8ToWide(*code) : std::wstring();
}

bool ViraIsLanguageSet() { return ViraReadLanguage().size() >= 3; }

void ViraFillLanguageLists(std::vector<std::wstring>& displayTexts, std::vector<std::wstring>& codes) {
  displayTexts = {L"Wählen Sie diesen Eintrag für Deutsch", L"For english chose this entry",
                  L"Choisissez cette ligne pour le francais"};
  codes = {L"", L"ENG", L"FRA"};
}

std::wstring ViraBuildLibraryName(const std::wstring& modulePath, const std::wstring& code,
                                  const std::wstring& extension) {
  if (code.empty()) return {};
  const std::size_t slash = modulePath.find_last_of(L'/');
  const std::size_t nameStart = slash == std::wstring::npos ? 0 : slash + 1;
  std::size_t dot = modulePath.find_last_of(L'.');
  // A dot in a folder name or at the start of the name ("/x/.so") is no extension.
  if (dot == std::wstring::npos || dot <= nameStart) dot = modulePath.size();
  const std::wstring ownExtension = modulePath.substr(dot);
  return modulePath.substr(0, dot) + L"_" + code + (extension.empty() ? ownExtension : extension);
}

bool ViraLoadLanguageLibrary(const std::wstring& path, bool makeCurrent) {
  CFileVersion version;
  // A file that is there but carries no version record is nobody's language library. A missing file goes
  // on to the loader, which says in the system's words that it is missing.
  if (!version.Open(path) && version.FileExists()) {
    reportFailure(path, L"IsValidVersion() failed");
    return false;
  }
  errno = 0;
  std::wstring reason;
  ui::ResourceHandle library = ui::loadResourceLibrary(path, reason);
  if (library == nullptr) {
    if (reason.empty() && errno != 0) reason = KoUtf8ToWide(std::strerror(errno));
    reportFailure(path, reason.empty() ? L"Unknown Windows Error" : reason);
    return false;
  }
  gLanguageLibrary = library;
  if (makeCurrent) AfxSetResourceHandle(library);
  return true;
}

ui::ResourceHandle ViraLanguageLibrary() { return gLanguageLibrary; }

const std::wstring& ViraLanguageError() { return gLanguageError; }

void ViraLoadStoredLanguage(const std::wstring& modulePath) {
  if (gLanguageLibrary != nullptr || !ViraIsLanguageSet()) return;
  const std::wstring library = ViraBuildLibraryName(modulePath, ViraReadLanguage(), L".so");
  if (!library.empty()) ViraLoadLanguageLibrary(library, false);
}

CTemporaryResourceOverride::CTemporaryResourceOverride(ui::ResourceHandle resources)
    : previous_(AfxGetResourceHandle()) {
  if (resources != nullptr) AfxSetResourceHandle(resources);
}

CTemporaryResourceOverride::CTemporaryResourceOverride() : CTemporaryResourceOverride(ViraLanguageLibrary()) {}

CTemporaryResourceOverride::~CTemporaryResourceOverride() { AfxSetResourceHandle(previous_); }
