#include "HostTestSupport.h"
#include "host/db/Drawing.h"
#include "host/headless/ScriptRunner.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using host::headless::ScriptRunner;

// A command that asks for points until something else answers, and says how it ended.
void askCommand() {
  ads_point p;
  int status;
  while ((status = acedGetPoint(nullptr, L"\nPunkt", p)) == RTNORM) acutPrintf(L"got %g,%g\n", p[0], p[1]);
  acutPrintf(L"ended %d\n", status);
}

void infoCommand() { acutPrintf(L"info\n"); }

class ScriptRunnerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(stack()->addCommand(L"RunnerTest", L"_Ask", L"Frage", 0, askCommand), Acad::eOk);
    ASSERT_EQ(stack()->addCommand(L"RunnerTest", L"_Info", L"Info", ACRX_CMD_TRANSPARENT, infoCommand), Acad::eOk);
  }
  void TearDown() override {
    stack()->removeGroup(L"RunnerTest");
    host::closeDrawing();
  }
  static AcEdCommandStack* stack() {
    return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
  }
  // Runs the lines as script "t"; answers the error ("" on success).
  std::string run(std::vector<std::string> lines) {
    ScriptRunner runner(std::move(lines), "t");
    std::string error;
    ok_ = runner.run(error);
    EXPECT_EQ(ok_, error.empty());
    return error;
  }
  hosttest::TranscriptCapture transcript_;
  bool ok_ = false;
};

TEST_F(ScriptRunnerTest, CommandsPromptsEscapeAndTheEndOfTheScript) {
  EXPECT_EQ(run({"\xEF\xBB\xBF# comment", "_ask", "1,2", "  # indented comment", "@esc", "", "frage", "3,4\r",
                 "5,x"}),
            "");
  EXPECT_EQ(transcript_.text(),
            "Command: _ask\n"
            "Punkt: 1,2\ngot 1,2\n"
            "Punkt: *Cancel*\nended -5002\n"
            "Command: \n"
            "Command: frage\n"
            "Punkt: 3,4\ngot 3,4\n"
            "Punkt: 5,x\nInvalid point.\n"
            "Punkt: *Cancel*\nended -5002\n");
}

TEST_F(ScriptRunnerTest, TransparentCommandsRunInsideAPromptWhichThenAsksAgain) {
  EXPECT_EQ(run({"_Ask", "'info", "'_Ask", "'nix", "1,1", "@esc"}), "");
  EXPECT_EQ(transcript_.text(),
            "Command: _Ask\n"
            "Punkt: 'info\ninfo\n"
            "Punkt: '_Ask\n** That command may not be invoked transparently **\n"
            "Punkt: 'nix\nUnknown command \"nix\".\n"
            "Punkt: 1,1\ngot 1,1\n"
            "Punkt: *Cancel*\nended -5002\n");
}

TEST_F(ScriptRunnerTest, LinesThatCannotBeCarriedOutStopTheRunWithTheirNumber) {
  EXPECT_EQ(run({"_Ask", "@esc", "NoSuchCommand", "_Ask"}), "t:3: \"NoSuchCommand\" is no command or function of this host");
  EXPECT_EQ(run({"# first", "@frobnicate 1"}), "t:2: unknown script line \"@frobnicate 1\"");
  EXPECT_EQ(run({"@open"}), "t:1: @open needs the path of a drawing");
  std::string error = run({"", "@open /no/such/drawing.dxf"});
  EXPECT_TRUE(error.starts_with("t:2: ")) << error;
  EXPECT_EQ(run({"@save"}), "t:1: no drawing is open to save");
  // A prompt that waits while the script acts on a dialog that is not there.
  error = run({"_Ask", "1,1", "@dialog 4000 click 1"});
  EXPECT_TRUE(error.starts_with("t:3: ")) << error;
  EXPECT_FALSE(ok_);
}

TEST_F(ScriptRunnerTest, OpenAndSaveDrawings) {
  std::filesystem::path out = std::filesystem::temp_directory_path() / "hostrt-runner-save.dxf";
  std::filesystem::remove(out);
  EXPECT_EQ(run({"@open " VIRA_SOURCE_DIR "/examples/site-plan.dxf", "@save " + out.string()}), "");
  EXPECT_TRUE(std::filesystem::exists(out));
  // The drawing belongs to the running command; it cannot be exchanged under it.
  EXPECT_EQ(run({"_Ask", "@open " + out.string()}), "t:2: cannot open a drawing while a command runs");
  std::filesystem::remove(out);
}

}  // namespace
