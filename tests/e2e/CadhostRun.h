// Runs the cadhost executable with the module on a drawing and a script, as a surveyor's batch job would.
#pragma once

#include "../support/ReadFile.h"
#include "../support/ScratchDir.h"
#include "../support/ShellRun.h"

#include <gmock/gmock.h>

#include <array>
#include <complex>
#include <filesystem>
#include <string>

namespace e2e {

namespace fs = std::filesystem;

// out: the transcript; err: host messages, and debug trace lines with --trace.
using HostRun = ShellRun;

// A fresh directory per test; runs and their files live in it.
class CadhostTest : public ::testing::Test {
 protected:
  void SetUp() override;

  // Runs `script` (the text of a script file) on examples/site-plan.dxf and saves the drawing to saved().
  HostRun cadhost(const std::string& script, const std::string& extraArguments = "");
  // The same on another drawing.
  HostRun cadhostOn(const fs::path& drawing, const std::string& script, const std::string& extraArguments = "");
  // Runs a script file of examples/.
  HostRun example(const std::string& name, const std::string& extraArguments = "");
  // Runs a shell command line (a cadhost run), its output going to files of the test's folder.
  HostRun runCommand(const std::string& command);

  fs::path saved() const { return dir_ / "saved.dxf"; }
  // The user's configuration folder of the runs (XDG_CONFIG_HOME), empty until a test writes to it.
  fs::path configHome() const { return dir_ / "config"; }
  // Stores the language code the module reads at start-up, as the suite's language chooser does.
  void setLanguage(const std::string& code);
  static fs::path sitePlan();
  static std::string slurp(const fs::path& file) { return readFile(file); }

  // The drawing checker's verdict for `matrix` (row-major): "mapped N kept M" or the mismatches.
  std::string checkDrawing(const std::array<double, 16>& matrix);

  ScratchDir dir_{"vira-e2e"};
  std::string module_ = VIRA_MODULE_PATH;  // the module file the runs load
};

// What the transcript holds between the first occurrence of `from` and the end.
std::string after(const std::string& text, const std::string& from);

// The 2½D solution written as a similarity of the plane: A1 goes to T1, the direction A1->A2 turns into
// T1->T2, and with `scale` every distance (heights included, about A1) grows by |T1T2| / |A1A2|.
std::array<double, 16> planarSimilarity(const std::array<double, 3>& a1, const std::array<double, 3>& a2,
                                        const std::array<double, 3>& t1, const std::array<double, 3>& t2,
                                        bool scale);

}  // namespace e2e
