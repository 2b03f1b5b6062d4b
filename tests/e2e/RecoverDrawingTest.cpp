// A damaged drawing on the command line: a normal start refuses it and points to --recover; --recover
// opens it, lists the repairs, and writes nothing unless the drawing is saved.
#include "CadhostRun.h"

#include <fstream>

namespace e2e {
namespace {

using ::testing::HasSubstr;

class RecoverDrawing : public CadhostTest {
 protected:
  // The example site plan cut off in the middle of its entities, as a failed copy leaves it.
  static std::string damagedSitePlan() {
    const std::string whole = slurp(sitePlan());
    const std::size_t entities = whole.find("ENTITIES");
    return whole.substr(0, whole.find("\n  0\n", entities + 400) + 1);
  }

  HostRun run(const fs::path& drawing, const std::string& arguments) {
    return runCommand(std::string(CADHOST_PATH) + " '" + drawing.string() + "' --script /dev/null " + arguments);
  }
};

TEST_F(RecoverDrawing, IsSuggestedThenListsItsRepairsAndLeavesTheDamagedFileAlone) {
  const fs::path damaged = dir_ / "damaged.dxf";
  const std::string bytes = damagedSitePlan();
  std::ofstream(damaged, std::ios::binary) << bytes;

  HostRun normal = run(damaged, "");
  EXPECT_EQ(normal.status, 1);
  EXPECT_THAT(normal.err, HasSubstr("damaged.dxf: line "));
  EXPECT_THAT(normal.err, HasSubstr("cadhost --recover opens it"));

  HostRun recovered = run(damaged, "--recover");
  EXPECT_EQ(recovered.status, 0) << recovered.err;
  EXPECT_THAT(recovered.out, HasSubstr("Recovered " + damaged.string() + ":\n  missing ENDSEC added: 1\n"
                                       "  missing EOF added: 1\n"));
  EXPECT_EQ(slurp(damaged), bytes) << "recovery without a save wrote the damaged file";

  const fs::path repaired = dir_ / "repaired.dxf";
  recovered = run(damaged, "--recover --save '" + repaired.string() + "'");
  EXPECT_EQ(recovered.status, 0) << recovered.err;
  EXPECT_EQ(slurp(damaged), bytes);
  HostRun reopened = run(repaired, "");
  EXPECT_EQ(reopened.status, 0) << reopened.err;
}

}  // namespace
}  // namespace e2e
