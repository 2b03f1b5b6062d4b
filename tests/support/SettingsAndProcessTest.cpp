#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

#include "support/KoProcess.h"
#include "support/KoSettings.h"
#include "ReadFile.h"
#include "ScopedEnv.h"
#include "ScratchDir.h"

namespace {

class PrivateHome : public ::testing::Test {
 protected:
    std::string FileText() const { return readFile(KoSettingsFile()); }
    const ScratchDir home_{"vira-settings"};
    const std::string dir_ = home_.string();
    const ScopedEnv config_{"XDG_CONFIG_HOME", dir_ + "/config"};
    const ScopedEnv state_{"XDG_STATE_HOME", dir_ + "/state"};
};

TEST_F(PrivateHome, SettingsSurviveOtherSectionsAndKeepTheirPlace)
{
    const std::string key = "Software\\Halvern Optik\\TRELLANOVA 10";
    EXPECT_EQ(KoSettingsFile(), dir_ + "/config/TRELLANOVA 10/registry.ini");
    EXPECT_EQ(KoStateDirectory(), dir_ + "/state/TRELLANOVA 10");
    EXPECT_FALSE(KoReadSetting(key, "IcadViraLanguage"));  // no file yet

    ASSERT_TRUE(KoWriteSetting(key, "IcadViraLanguage", "ENG"));
    ASSERT_TRUE(KoWriteSetting(kKoPlatformSection, "Spreadsheet", "gnumeric --no-splash"));
    ASSERT_TRUE(KoWriteSetting(key, "Other", "1"));
    ASSERT_TRUE(KoWriteSetting(key, "IcadViraLanguage", "FRA"));
    EXPECT_EQ(FileText(),
              "[Software\\Halvern Optik\\TRELLANOVA 10]\nIcadViraLanguage=FRA\nOther=1\n"
              "[Platform]\nSpreadsheet=gnumeric --no-splash\n");
    EXPECT_EQ(KoReadSetting(key, "IcadViraLanguage").value_or(""), "FRA");
    EXPECT_EQ(KoReadSetting(kKoPlatformSection, "Spreadsheet").value_or(""), "gnumeric --no-splash");
    EXPECT_FALSE(KoReadSetting(kKoPlatformSection, "IcadViraLanguage"));  // a name belongs to its section

    // Written by hand: blanks, CR LF and comments are what people leave in such a file.
    std::ofstream(KoSettingsFile()) << "; mine\r\n[Platform]\r\n  UpdateServer = 127.0.0.1:8080 \r\n";
    EXPECT_EQ(KoReadSetting(kKoPlatformSection, "UpdateServer").value_or(""), "127.0.0.1:8080");
}

TEST_F(PrivateHome, UnwritableSettingsFolderFailsWithoutThrowing)
{
    std::ofstream(dir_ + "/config") << "a file where the folder should be";
    EXPECT_FALSE(KoWriteSetting("Platform", "Browser", "x"));
    EXPECT_FALSE(KoReadSetting("Platform", "Browser"));
}

TEST(KoProcess, CommandsSplitAtBlanksOutsideQuotes)
{
    EXPECT_EQ(KoSplitCommand("libreoffice --calc"), (std::vector<std::string>{"libreoffice", "--calc"}));
    EXPECT_EQ(KoSplitCommand("  \"/opt/My Office/calc\"  -n \"\" "),
              (std::vector<std::string>{"/opt/My Office/calc", "-n", ""}));
    EXPECT_TRUE(KoSplitCommand("   ").empty());
}

TEST(KoProcess, StartsProgramsWithoutAShellAndNamesAMissingOne)
{
    const ScratchDir dir("vira-spawn");
    const std::string marker = dir.string() + "/a;b $(x)";  // would be mangled by any shell
    std::string error;
    ASSERT_TRUE(KoStartProgram({"touch", marker}, error)) << error;
    for (int i = 0; i < 200 && ::access(marker.c_str(), F_OK) != 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(::access(marker.c_str(), F_OK), 0);

    EXPECT_FALSE(KoStartProgram({"no-such-program-vira"}, error));
    EXPECT_EQ(error, "no-such-program-vira: program not found");
    EXPECT_FALSE(KoStartProgram({}, error));
}

TEST(KoProcess, ListSeparatorFollowsTheDecimalPointOfTheUsersLocale)
{
    ::setenv("LC_ALL", "C", 1);
    EXPECT_EQ(KoListSeparator(), L",");
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    locale_t german = ::newlocale(LC_NUMERIC_MASK, "de_DE.UTF-8", static_cast<locale_t>(nullptr));
    if (german) {
        ::freelocale(german);
        EXPECT_EQ(KoListSeparator(), L";");
    }
    ::unsetenv("LC_ALL");
}

}  // namespace
