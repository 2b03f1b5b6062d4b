#include "DrawingFixture.h"

extern "C" int hiddenModuleCountPoints();

TEST_F(DrawingTest, ModuleBuiltWithHiddenVisibilityReachesTheDatabase) {
  EXPECT_EQ(hiddenModuleCountPoints(), -1);  // no drawing yet
  openSample();
  EXPECT_EQ(hiddenModuleCountPoints(), 1);
}
