// The protocol: backlog delivery, levels, the time format, the debugger text and the protocol file.
#include "support/KoLog.h"
#include "ReadFile.h"
#include "ScopedEnv.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

namespace {

// Keeps "LEVEL MESSAGE" of every line, the time stamp cut off.
struct Recorder : KoLogger {
  explicit Recorder(int level) : KoLogger(level) {}
  int Write(std::int32_t level, const String& text) override {
    const std::string line = text.StdString();
    EXPECT_TRUE(std::regex_match(line.substr(0, 11), std::regex(R"(\[\d\d:\d\d:\d\d\] )"))) << line;
    lines.push_back(std::to_string(level) + " " + line.substr(11));
    return 1;
  }
  std::vector<std::string> lines;
};

std::vector<std::string> debugLines;

// Every test starts with an empty queue, no master and no protocol logger, and leaves it so.
class LogTest : public ::testing::Test {
 protected:
  void SetUp() override { Drain(); }
  void TearDown() override {
    Drain();
    KoSetDebugOutput(nullptr);
  }
  static void Drain() {
    KoMasterLogger sink;
    SetMasterLogger(&sink);
    UninstallTomaDebugLogger();
    Log(9, "drain");
    SetMasterLogger(nullptr);
  }
};

std::tm At(int hour, int minute) {
  std::tm time{};
  time.tm_year = 2024 - 1900;
  time.tm_mon = 2;
  time.tm_mday = 7;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = 9;
  return time;
}

TEST_F(LogTest, BacklogIsDeliveredInOrderToTheLoggersItsLevelAdmits) {
  EXPECT_EQ(Log(3, "first"), 1);
  EXPECT_EQ(Log(4, "second"), 2);
  EXPECT_EQ(Log(1, "third"), 3);
  KoMasterLogger master;
  Recorder common(3), detail(4);
  master.Attach(&common);
  master.Attach(&detail);
  master.Attach(&detail);
  master.Detach(&detail);  // the first reference goes, the second stays
  SetMasterLogger(&master);
  EXPECT_EQ(Log(5, "too detailed for both"), 0);
  EXPECT_EQ(detail.lines, (std::vector<std::string>{"3 first", "4 second", "1 third"}));
  EXPECT_EQ(common.lines, (std::vector<std::string>{"3 first", "1 third"}));
  SetMasterLogger(nullptr);
}

TEST_F(LogTest, TimeTokensAreExpandedBeforeTheMessage) {
  const String twelveHour = "$hour12:$minute $ampm";
  EXPECT_EQ(KoExpandLogFormat(twelveHour, At(0, 30), ""), "00:30 AM");
  EXPECT_EQ(KoExpandLogFormat(twelveHour, At(12, 0), ""), "12:00 PM");
  EXPECT_EQ(KoExpandLogFormat(twelveHour, At(13, 15), ""), "01:15 PM");
  EXPECT_EQ(KoExpandLogFormat("$day.$month.$year $hour24:$minute:$second $day", At(23, 5), ""),
            "07.03.2024 23:05:09 07");
  EXPECT_EQ(KoExpandLogFormat("[$hour24] $mesg", At(9, 0), "$day costs 5% $mesg"), "[09] $day costs 5% $mesg");
}

TEST_F(LogTest, DebuggerTextNeverReadsArguments) {
  EXPECT_EQ(KoDebugText("%s%n%d%%%x 100%% %"), "%s%n%d%%x 100% %");
  EXPECT_EQ(KoDebugText(std::string(5000, '%')).size(), 1503u);
  debugLines.clear();
  KoSetDebugOutput([](const char* text) { debugLines.emplace_back(text); });
  Log(1, "Line: %s%s%s%n%n%n\n");
  EXPECT_EQ(debugLines, (std::vector<std::string>{"Line: %s%s%s%n%n%n\n"}));
}

TEST_F(LogTest, ProtocolFileKeepsLinesOfLevelFourAndBelow) {
  const std::filesystem::path state = std::filesystem::path(::testing::TempDir()) / "log-state";
  std::filesystem::remove_all(state);
  const ScopedEnv stateHome("XDG_STATE_HOME", state.string());
  const std::string file = KoTomaProtokollPath();
  EXPECT_EQ(file, (state / "TRELLANOVA 10" / "TomaProtokoll.log").string());

  InstallTomaDebugLogger();
  EXPECT_FALSE(IsTomaDebugLoggerInstalled()) << "no master yet";
  KoMasterLogger master;
  SetMasterLogger(&master);
  InstallTomaDebugLogger();  // the folder is missing: the line is skipped without harm
  EXPECT_TRUE(IsTomaDebugLoggerInstalled());
  std::filesystem::create_directories(state / "TRELLANOVA 10");
  InstallTomaDebugLogger();  // once only
  Log(1, "Line: %s%n%s 1.01\r\n");
  Log(5, "not kept");
  UninstallTomaDebugLogger();
  EXPECT_FALSE(IsTomaDebugLoggerInstalled());
  Log(1, "after");
  SetMasterLogger(nullptr);

  const std::string written = readFile(file);
  EXPECT_TRUE(std::regex_match(written, std::regex(R"(1 : \[\d\d:\d\d:\d\d\] Line: %s%n%s 1\.01\r\n\n)"
                                                         R"(4 : \[\d\d:\d\d:\d\d\] UninstallTomaDebugLogger\(\)\n)")))
      << written;
}

TEST_F(LogTest, WritersOnSeveralThreadsAreSerialised) {
  KoMasterLogger master;
  Recorder all(9);
  master.Attach(&all);
  SetMasterLogger(&master);
  std::vector<std::thread> writers;
  for (int t = 0; t < 4; ++t)
    writers.emplace_back([t] {
      for (int i = 0; i < 300; ++i) Log(t, std::to_string(i));
    });
  for (std::thread& writer : writers) writer.join();
  SetMasterLogger(nullptr);
  ASSERT_EQ(all.lines.size(), 1200u);
  int next[4] = {};
  for (const std::string& line : all.lines)
    EXPECT_EQ(line.substr(2), std::to_string(next[line[0] - '0']++)) << "each writer's lines stay in order";
}

}  // namespace
