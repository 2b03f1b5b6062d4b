// The user interface language of the suite: the code stored for every TRELLANOVA 10 program (the registry
// value "IcadViraLanguage", on this platform in the user's settings file), the language libraries beside
// the module file that carry the English and French resources, and loading the chosen one.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/Resources.h"

inline constexpr const char* kViraLanguageKey = "Software\\Halvern Optik\\TRELLANOVA 10";
inline constexpr const char* kViraLanguageValue = "IcadViraLanguage";

// Stores `code` for the whole suite; false when the settings file cannot be written.
bool ViraWriteLanguage(const std::wstring& code);
// The stored code; empty when none is stored.
std::wstring ViraReadLanguage();
// A code counts only with three characters or more ("ENG", "FRA"); anything shorter means German.
bool ViraIsLanguageSet();

// The rows of a language chooser, German first: display texts and their codes (empty for German).
void ViraFillLanguageLists(std::vector<std::wstring>& displayTexts, std::vector<std::wstring>& codes);

// The library for `code` beside `modulePath`: folder and base name of the module, "_", the code, then
// `extension` (the module's own extension when empty). Empty when the code is empty.
// ("/opt/t10/ViraCadtoolsV10.so", "ENG", ".so") -> "/opt/t10/ViraCadtoolsV10_ENG.so"
std::wstring ViraBuildLibraryName(const std::wstring& modulePath, const std::wstring& code,
                                  const std::wstring& extension);

// Checks the library's version record, then loads it and keeps it for the life of the process; with
// `makeCurrent` its resources become current at once. A failure is shown in a message box (and kept for
// ViraLanguageError) and leaves the module on its own resources.
bool ViraLoadLanguageLibrary(const std::wstring& path, bool makeCurrent);
// The loaded language library's resources, null when none is loaded.
ui::ResourceHandle ViraLanguageLibrary();
// The text of the last failed load.
const std::wstring& ViraLanguageError();

// At start-up: loads the library of the stored code beside the module file, if a code is set.
void ViraLoadStoredLanguage(const std::wstring& modulePath);
