// Closing the window with a changed drawing asks whether to save it: Yes saves it to its own file, No leaves
// the file as it was, Cancel keeps the window open for more work. A drawing whose changes were saved or undone
// closes without a question; a drawing opened with repairs asks, as its file still holds the damage.
#include "WindowRun.h"

#include <fstream>

namespace windowtest {
namespace {

const std::string kQuestion = "\"\xC3\x84nderungen in plan.dxf speichern?\" (yes/no/cancel) -> ";

class CloseTest : public WindowTest {
 protected:
  // A fresh copy of the site plan, moved by the demo's transformation, then the lines of `closing`.
  HostRun changeAndClose(const std::string& closing) {
    fs::copy_file(sitePlan(), plan(), fs::copy_options::overwrite_existing);
    return cadhost(plan(), demo() + closing, "--window", {});
  }
  fs::path plan() const { return dir_ / "plan.dxf"; }
  static std::string demo() { return slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "two-pairs.txt"); }
};

TEST_F(CloseTest, YesSavesTheChangedDrawingNoDropsTheChangesCancelKeepsTheWindowOpen) {
  const HostRun reference = cadhost(sitePlan(), demo(), "--headless", dir_ / "moved.dxf", false);
  ASSERT_EQ(reference.status, 0) << reference.err;
  const std::string original = slurp(sitePlan()), moved = slurp(dir_ / "moved.dxf");
  ASSERT_NE(moved, original);

  const HostRun yes = changeAndClose("@answer message yes\n@close\n");
  ASSERT_EQ(yes.status, 0) << yes.err;
  EXPECT_NE(yes.out.find(kQuestion + "yes"), std::string::npos) << yes.out;
  EXPECT_EQ(slurp(plan()), moved);

  const HostRun no = changeAndClose("@answer message no\n@close\n_ViraCadtool\n");
  ASSERT_EQ(no.status, 0) << no.err;
  EXPECT_NE(no.out.find(kQuestion + "no"), std::string::npos) << no.out;
  EXPECT_EQ(slurp(plan()), original);
  EXPECT_EQ(no.out.find("VIRA cadtools"), std::string::npos) << "the window is gone: nothing after the close runs";

  // Cancel: the window stays and takes the next command; asked again, the user drops the changes.
  const HostRun cancel =
      changeAndClose("@answer message cancel\n@close\n_ViraCadtool\n@answer message no\n@close\n");
  ASSERT_EQ(cancel.status, 0) << cancel.err;
  const std::size_t stayed = cancel.out.find(kQuestion + "cancel");
  ASSERT_NE(stayed, std::string::npos) << cancel.out;
  const std::size_t command = cancel.out.find("VIRA cadtools", stayed);
  ASSERT_NE(command, std::string::npos) << cancel.out;
  EXPECT_NE(cancel.out.find(kQuestion + "no", command), std::string::npos) << cancel.out;
  EXPECT_EQ(slurp(plan()), original);
}

TEST_F(CloseTest, ADrawingWhoseChangesAreSavedOrUndoneClosesWithoutAQuestion) {
  for (const std::string& closing : {std::string("@close\n"), std::string("U\n@close\n"), std::string("@save\n@close\n")}) {
    const HostRun run = closing == "@close\n" ? cadhost(sitePlan(), closing, "--window", {}) : changeAndClose(closing);
    ASSERT_EQ(run.status, 0) << closing << run.err;
    EXPECT_EQ(run.out.find("speichern?"), std::string::npos) << closing << run.out;
  }
  // Undone below the saved state and changed another way: as many changes as when saved, but another drawing.
  const std::string shift = slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "one-pair.txt");
  const HostRun again = changeAndClose("@save\nU\n" + shift + "@answer message no\n@close\n");
  ASSERT_EQ(again.status, 0) << again.err;
  EXPECT_NE(again.out.find(kQuestion + "no"), std::string::npos) << again.out;

  // Opened with repairs, the drawing differs from its damaged file before any command: closing asks.
  const std::string whole = slurp(sitePlan());
  std::ofstream(plan(), std::ios::binary) << whole.substr(0, whole.rfind("EOF"));
  const HostRun recovered = cadhost(plan(), "@answer message no\n@close\n", "--window --recover", {});
  ASSERT_EQ(recovered.status, 0) << recovered.err;
  EXPECT_NE(recovered.out.find(kQuestion + "no"), std::string::npos) << recovered.out;
}

}  // namespace
}  // namespace windowtest
