// The module file inside the host: loading, its plain command, and unloading without leftovers.
#include "CadhostRun.h"

namespace e2e {
namespace {

TEST_F(CadhostTest, ViraCadtoolAnswersAndUnloadingLeavesNoCommandBehind) {
  HostRun run = cadhost("ViraCadtool\n_ViraCadtool\n", "--trace");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Command: ViraCadtool\nVIRA cadtools \nCommand: _ViraCadtool\nVIRA cadtools \n");
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
  EXPECT_NE(run.err.find("interface version 2.6.0.1"), std::string::npos) << run.err;
  // The host names what a module left registered when it has to clean up after it.
  EXPECT_NE(run.err.find("message 2 to"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("left behind"), std::string::npos) << run.err;
}

}  // namespace
}  // namespace e2e
