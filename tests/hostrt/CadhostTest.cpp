// The cadhost executable from the outside: a script in, the transcript out, the exit status.
#include "tests/support/ScratchDir.h"
#include "tests/support/ShellRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

using Outcome = ShellRun;

class CadhostTest : public ::testing::Test {
 protected:
  Outcome cadhost(const std::string& arguments, const std::string& script) {
    fs::path scriptFile = dir_ / "script.txt";
    std::ofstream(scriptFile, std::ios::binary) << script;
    return runShell(std::string(CADHOST_PATH) + " " + arguments + " --module " TESTMODULE_PATH " --script " +
                        scriptFile.string(),
                    dir_);
  }

  ScratchDir dir_{"hostrt-cadhost"};
};

// What the module's commands do through the executable is the end-to-end suites' subject; here, the
// developer's trace reaches standard error only when asked for.
TEST_F(CadhostTest, TraceLinesOnlyWhenAskedFor) {
  Outcome run = cadhost("", "Hallo\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Command: Hallo\nHallo Welt 42 narrow\n");
  EXPECT_EQ(run.err, "");

  run = cadhost("--trace", "Hallo\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "Command: Hallo\nHallo Welt 42 narrow\n");
  EXPECT_NE(run.err.find("[trace]   message 1 to "), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("[trace] hello traced\n"), std::string::npos) << run.err;
}

TEST_F(CadhostTest, AFailingScriptExitsNonZeroAndWritesNoDrawing) {
  fs::path saved = dir_ / "never.dxf";
  Outcome run = cadhost(VIRA_SOURCE_DIR "/examples/site-plan.dxf --save " + saved.string(), "Hallo\n\n@bogus\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "cadhost: " + (dir_ / "script.txt").string() + ":3: unknown script line \"@bogus\"\n");
  EXPECT_FALSE(fs::exists(saved));

  run = cadhost("/no/such.dxf --save " + saved.string(), "");
  EXPECT_EQ(run.status, 1);
  EXPECT_FALSE(fs::exists(saved));

  run = cadhost("--frobnicate", "");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("usage: cadhost"), std::string::npos);
}

}  // namespace
