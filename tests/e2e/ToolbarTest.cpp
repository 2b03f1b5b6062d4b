// The toolbar's buttons in the host: pressed while a point prompt waits, each ends what runs and starts its
// own command.
#include "CadhostRun.h"

namespace e2e {
namespace {

TEST_F(CadhostTest, ToolbarButtonsEndTheRunningPromptAndStartTheirCommand) {
  // A point is picked into the transformation dialog; then "pick points" is pressed, then "transform".
  HostRun run = cadhost(
      "_ViraCoordDef\n10,20\n@toolbar 40002\n@toolbar 40001\n@dialog 4000 dump\n@esc\n");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string prompt = "Zeichnungspunkt [Abbrechen]: ";
  EXPECT_EQ(run.out.substr(0, run.out.find("dialog 4000")),
            "Command: _ViraCoordDef\n" + prompt + "10,20\n" +
                // The first Escape ends the prompt and with it the command, the second meets the command line.
                prompt + "*Cancel*\nCommand: *Cancel*\nCommand: _ViraPtPick\n" +
                "Punkt [Abbrechen]: *Cancel*\nCommand: *Cancel*\nCommand: _ViraCoordDef\n");
  // The transformation starts afresh: the point picked before is gone with the dialog that held it.
  EXPECT_NE(run.out.find("4005 edit \"\" readonly\n"), std::string::npos) << run.out;
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
}

TEST_F(CadhostTest, PressingAToolbarButtonThatDoesNotExistStopsTheScript) {
  HostRun run = cadhost("@toolbar 40003\n");
  EXPECT_NE(run.status, 0);
  EXPECT_NE(run.err.find("40003"), std::string::npos) << run.err;
}

}  // namespace
}  // namespace e2e
