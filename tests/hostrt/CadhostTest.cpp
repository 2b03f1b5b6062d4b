// The cadhost executable from the outside: a script in, the transcript out, the exit status.
#include "tests/support/ReadFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

class CadhostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("hostrt-cadhost-" + std::to_string(::getpid()));
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  Outcome cadhost(const std::string& arguments, const std::string& script) {
    fs::path scriptFile = dir_ / "script.txt";
    std::ofstream(scriptFile, std::ios::binary) << script;
    std::string command = std::string(CADHOST_PATH) + " " + arguments + " --module " TESTMODULE_PATH
                          " --script " + scriptFile.string() + " >" + (dir_ / "out").string() + " 2>" +
                          (dir_ / "err").string();
    Outcome run;
    int raw = std::system(command.c_str());
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = readFile(dir_ / "out");
    run.err = readFile(dir_ / "err");
    return run;
  }

  fs::path dir_;
};

TEST_F(CadhostTest, RunsAModuleCommandFromAScriptAndSavesTheDrawing) {
  fs::path saved = dir_ / "saved.dxf";
  Outcome run = cadhost(VIRA_SOURCE_DIR "/examples/site-plan.dxf --save " + saved.string(),
                    "# the module's commands by local and global name\n"
                    "Hallo\n"
                    "_testpick\n"
                    "2561210,5634010,251.2\n"
                    "Abbrechen\n"
                    "Senden\n"
                    "_TestPick\n"
                    "7,8\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Command: Hallo\n"
            "Hallo Welt 42 narrow\n"
            "Command: _testpick\n"
            "Punkt [Abbrechen]: 2561210,5634010,251.2\n"
            "point 2.56121e+06 5.63401e+06 251.2\n"
            "Punkt [Abbrechen]: Abbrechen\n"
            "keyword cancel\n"
            "result -5005\n"
            "Command: Senden\n"
            "Command: _TestHello\n"
            "Hallo Welt 42 narrow\n"
            "Command: _TestPick\n"
            "Punkt [Abbrechen]: 7,8\n"
            "point 7 8 0\n"
            "Punkt [Abbrechen]: *Cancel*\n"
            "result -5002\n");
  EXPECT_TRUE(fs::exists(saved));
  EXPECT_EQ(run.err, "") << "trace lines only when asked for";

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
