// The user's language: the stored code, the library beside the module, its checks and messages, the
// resource scopes, and the two libraries the project builds, held against the module's own resources.
#include "app/CFileVersion.h"
#include "app/CResourceDll.h"
#include "app/ViraLanguage.h"
#include "app/ViraResources.h"
#include "host/headless/UiHeadless.h"
#include "support/KoConvert.h"
#include "tests/hostrt/HostTestSupport.h"
#include "tests/support/ReadFile.h"
#include "tests/support/ScopedEnv.h"
#include "tests/support/ScratchDir.h"

#include <dlfcn.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

const std::wstring kWarning =
    L"A part of TRELLANOVA 10 will not switch into the desired language.\n"
    L"Ein Teil von TRELLANOVA 10 wird die Sprache nicht umschalten.\n"
    L"Une partie de TRELLANOVA 10 va pas changer dans la langue souhaitée";

fs::path builtLibrary(const std::string& code) {
  return fs::path(VIRA_BINARY_DIR) / ("ViraCadtoolsV10_" + code + ".so");
}

class LanguageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    config_.emplace("XDG_CONFIG_HOME", (dir_ / "config").string());
    host::headless::HeadlessUi::instance().reset();
  }
  void TearDown() override {
    config_.reset();
    host::headless::HeadlessUi::instance().reset();
  }

  fs::path write(const std::string& name, const std::string& bytes) {
    std::ofstream(dir_ / name, std::ios::binary) << bytes;
    return dir_ / name;
  }

  ScratchDir dir_{"vira-language"};
  std::optional<ScopedEnv> config_;
};

TEST_F(LanguageTest, TheStoredCodeCountsFromThreeCharacters) {
  EXPECT_FALSE(ViraIsLanguageSet());
  ASSERT_TRUE(ViraWriteLanguage(L"EN"));
  EXPECT_FALSE(ViraIsLanguageSet()) << "two characters mean German";
  ASSERT_TRUE(ViraWriteLanguage(L"FRA"));
  EXPECT_TRUE(ViraIsLanguageSet());
  // The other programs of the suite find it under the registry key's name.
  const std::string ini = readFile(dir_ / "config" / "TRELLANOVA 10" / "registry.ini");
  EXPECT_NE(ini.find("[Software\\Halvern Optik\\TRELLANOVA 10]"), std::string::npos) << ini;
  EXPECT_NE(ini.find("IcadViraLanguage=FRA"), std::string::npos) << ini;

  std::vector<std::wstring> texts{L"left over"}, codes{L"XX", L"YY"};
  ViraFillLanguageLists(texts, codes);
  EXPECT_EQ(texts, (std::vector<std::wstring>{L"Wählen Sie diesen Eintrag für Deutsch", L"For english chose this entry",
                                              L"Choisissez cette ligne pour le francais"}));
  EXPECT_EQ(codes, (std::vector<std::wstring>{L"", L"ENG", L"FRA"}));
}

TEST(LanguageLibraryNameTest, SitsBesideTheModuleWithTheCodeAppended) {
  EXPECT_EQ(ViraBuildLibraryName(L"/opt/t10/ViraCadtoolsV10.so", L"ENG", L".so"), L"/opt/t10/ViraCadtoolsV10_ENG.so");
  EXPECT_EQ(ViraBuildLibraryName(L"/opt/t10/ViraCadtoolsV10.so", L"FRA", L""), L"/opt/t10/ViraCadtoolsV10_FRA.so");
  EXPECT_EQ(ViraBuildLibraryName(L"/opt/t10/ViraCadtoolsV10.so", L"", L".so"), L"");
  // A dot in a folder is not the module's extension.
  EXPECT_EQ(ViraBuildLibraryName(L"/opt/t10.d/ViraCadtoolsV10", L"ENG", L""), L"/opt/t10.d/ViraCadtoolsV10_ENG");
}

TEST(ResourceOverrideTest, ScopesNestAndANullOneChangesNothing) {
  ui::ResourceModule first, second;
  const ui::ResourceHandle before = AfxGetResourceHandle();
  {
    CTemporaryResourceOverride outer(&first);
    EXPECT_EQ(AfxGetResourceHandle(), &first);
    {
      CTemporaryResourceOverride inner(&second);
      EXPECT_EQ(AfxGetResourceHandle(), &second);
      CTemporaryResourceOverride none(nullptr);
      EXPECT_EQ(AfxGetResourceHandle(), &second);
    }
    EXPECT_EQ(AfxGetResourceHandle(), &first);
  }
  EXPECT_EQ(AfxGetResourceHandle(), before);
}

TEST_F(LanguageTest, ALibraryIsCheckedBeforeItIsLoadedAndFailuresLeaveTheModuleGerman) {
  ASSERT_EQ(ViraLanguageLibrary(), nullptr);
  const ui::ResourceHandle german = AfxGetResourceHandle();
  {
    CResourceDll scope;
    EXPECT_EQ(AfxGetResourceHandle(), german) << "no library: the module's own resources stay";
  }
  hosttest::TranscriptCapture transcript;
  auto expectRefused = [&](const fs::path& path, const std::wstring& reason) {
    EXPECT_FALSE(ViraLoadLanguageLibrary(path.wstring(), true)) << path;
    EXPECT_EQ(ViraLanguageError(), L"Error Loading Language DLL " + path.wstring() + L" \n" + reason + L"\n\n" + kWarning);
    EXPECT_EQ(ViraLanguageLibrary(), nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), german);
  };
  // A missing file is the loader's to report, in the system's words; a file without a version record is
  // never loaded.
  expectRefused(dir_ / "ViraCadtoolsV10_ENG.so", L"No such file or directory");
  expectRefused(write("text_ENG.so", "ENG\n"), L"IsValidVersion() failed");
  const std::string real = readFile(builtLibrary("ENG"));
  ASSERT_GT(real.size(), 4096u);
  // A record but nothing the loader can map (its program headers wiped): the loader's own reason.
  std::string unloadable = real;
  for (std::size_t i = 64; i < 64 + 56 * 4; ++i) unloadable[i] = '\0';
  const fs::path broken = write("broken_ENG.so", unloadable);
  EXPECT_FALSE(ViraLoadLanguageLibrary(broken.wstring(), true));
  EXPECT_EQ(ViraLanguageError().find(L"IsValidVersion"), std::wstring::npos) << "the record itself is fine";
  EXPECT_EQ(ViraLanguageError().find(L"Unknown Windows Error"), std::wstring::npos);
  EXPECT_NE(ViraLanguageError().find(L"broken_ENG.so \n"), std::wstring::npos);
  // Each failure is shown to the user once.
  std::size_t shown = 0;
  for (std::size_t at = 0; (at = transcript.text().find("[message] \"Error Loading Language DLL", at)) != std::string::npos;
       ++at)
    ++shown;
  EXPECT_EQ(shown, 3u) << transcript.text();

  // A library that loads stays for the life of the process (and the lists then speak its language), so
  // this part runs in a child process of its own.
  EXPECT_EXIT(
      {
        std::string problems;
        auto check = [&problems](bool ok, const char* what) { problems += ok ? "" : std::string(what) + "; "; };
        check(ViraLoadLanguageLibrary(builtLibrary("FRA").wstring(), false), "loads");
        check(ViraLanguageLibrary() != nullptr && ViraLanguageLibrary()->name == L"ViraCadtoolsV10_FRA", "kept");
        check(AfxGetResourceHandle() == german, "loaded without being made current");
        {
          CResourceDll scope;
          check(AfxGetResourceHandle() == ViraLanguageLibrary(), "current inside the scope");
          std::wstring tooltip;
          check(AfxLoadString(40002, tooltip) && tooltip == L"Sélectionner des points\nSélectionner des points",
                "the tooltip in French");
        }
        check(AfxGetResourceHandle() == german, "the module's own resources after the scope");
        std::fputs(problems.c_str(), stderr);
        std::_Exit(problems.empty() ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

// The libraries the project builds: the module's resources item for item, every text translated.
class BuiltLibraryTest : public ::testing::TestWithParam<std::string> {
 protected:
  const ui::ResourceModule& library() {
    void* handle = ::dlopen(builtLibrary(GetParam()).c_str(), RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(handle, nullptr) << ::dlerror();
    auto entry = reinterpret_cast<const ui::ResourceModule* (*)()>(::dlsym(handle, "UiResourceModule"));
    EXPECT_NE(entry, nullptr);
    return *entry();
  }

  // Texts that read the same in every language.
  bool translated(const std::wstring& german, const std::wstring& text) {
    static const std::set<std::wstring> international{L"OK", L"VIRA cadtools", L"Microsoft Excel..."};
    static const std::set<std::wstring> sameInFrench{L"Liste"};
    if (german.empty()) return text.empty();
    if (international.count(german) != 0 ||
        (GetParam() == "FRA" && sameInFrench.count(german) != 0))
      return text == german;
    return !text.empty() && text != german;
  }
};

TEST_P(BuiltLibraryTest, HoldsEveryResourceOfTheModuleTranslated) {
  const ui::ResourceModule german = ViraMakeGermanResources();
  const ui::ResourceModule& translation = library();
  ASSERT_EQ(translation.dialogs.size(), german.dialogs.size());
  for (const auto& [id, dialog] : german.dialogs) {
    const ui::DialogTemplate& other = translation.dialogs.at(id);
    EXPECT_TRUE(translated(dialog.title, other.title)) << id;
    ASSERT_EQ(other.controls.size(), dialog.controls.size()) << id;
    for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
      const ui::ControlTemplate& a = dialog.controls[i];
      const ui::ControlTemplate& b = other.controls[i];
      EXPECT_TRUE(a.id == b.id && a.kind == b.kind && a.style == b.style && a.rect == b.rect) << id << " " << i;
      EXPECT_TRUE(translated(a.text, b.text)) << id << " control " << i << " still reads: " << KoWideToUtf8(b.text);
    }
  }
  ASSERT_EQ(translation.strings.size(), german.strings.size());
  for (const auto& [id, text] : german.strings) {
    EXPECT_TRUE(translated(text, translation.strings.at(id))) << "string " << id;
    EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'),
              std::count(translation.strings.at(id).begin(), translation.strings.at(id).end(), L'\n'))
        << "status text and tooltip stay apart";
  }
  ASSERT_EQ(translation.menus.size(), german.menus.size());
  // Menu 4003 is the module's English menu: English stays as it is, French translates it again.
  std::function<void(int, const std::vector<ui::MenuItem>&, const std::vector<ui::MenuItem>&)> sameMenu =
      [&](int id, const std::vector<ui::MenuItem>& source, const std::vector<ui::MenuItem>& items) {
        ASSERT_EQ(items.size(), source.size()) << "menu " << id;
        for (std::size_t i = 0; i < source.size(); ++i) {
          EXPECT_EQ(items[i].id, source[i].id);
          EXPECT_TRUE(id == 4003 && GetParam() == "ENG" ? !items[i].text.empty()
                                                        : translated(source[i].text, items[i].text))
              << "menu " << id << " item " << i;
          sameMenu(id, source[i].popup, items[i].popup);
        }
      };
  for (const auto& [id, menu] : german.menus) sameMenu(id, menu.items, translation.menus.at(id).items);
  ASSERT_EQ(translation.toolbars.size(), german.toolbars.size());
  for (const auto& [id, bar] : german.toolbars) {
    EXPECT_EQ(translation.toolbars.at(id).buttons, bar.buttons);
    EXPECT_EQ(translation.toolbars.at(id).images, bar.images);
  }

  CFileVersion version;
  ASSERT_TRUE(version.Open(builtLibrary(GetParam()).wstring())) << version.Problem();
  EXPECT_FALSE(version.QueryValue(L"FileVersion").empty());
  EXPECT_EQ(version.QueryValue(L"OriginalFilename"), L"ViraCadtoolsV10_" + builtLibrary(GetParam()).stem().wstring().substr(16) + L".so");
  EXPECT_EQ(version.QueryValue(L"NoSuchValue"), L"");
}

INSTANTIATE_TEST_SUITE_P(Languages, BuiltLibraryTest, ::testing::Values("ENG", "FRA"));

}  // namespace
