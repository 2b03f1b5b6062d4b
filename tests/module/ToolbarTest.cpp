// The toolbar in the host's frame: what it holds, how a failure to make it shows, and what its buttons send.
#include "app/CViraCadtoolsV10App.h"
#include "app/MfcToolbar.h"
#include "app/ViraLanguage.h"
#include "app/ViraResources.h"
#include "host/editor/Input.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"
#include "tests/hostrt/HostTestSupport.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

// Width and height from a PNG file's header chunk; 0 x 0 when it is no PNG.
std::pair<std::uint32_t, std::uint32_t> pngSize(const std::string& png) {
  if (png.size() < 24 || png.compare(0, 8, "\x89PNG\r\n\x1a\n") != 0 || png.compare(12, 4, "IHDR") != 0) return {0, 0};
  auto number = [&png](std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = (value << 8) | static_cast<unsigned char>(png[at + i]);
    return value;
  };
  return {number(16), number(20)};
}

class ToolbarTest : public ::testing::Test {
 protected:
  void SetUp() override { host::headless::HeadlessUi::instance().reset(); }
  void TearDown() override {
    ViraDestroyToolbar();
    host::editor::clearQueuedInput();
    host::headless::HeadlessUi::instance().reset();
  }
};

TEST_F(ToolbarTest, DocksWithTwoButtonsThatReportToTheToolbarItself) {
  hosttest::TranscriptCapture transcript;
  ViraCreateToolbar();
  MfcToolbar* bar = ViraToolbar();
  ASSERT_NE(bar, nullptr);
  ViraCreateToolbar();
  EXPECT_EQ(ViraToolbar(), bar) << "a second initialisation keeps the one toolbar";
  EXPECT_EQ(transcript.text(), "");
  EXPECT_TRUE(bar->IsWindowVisible());
  ASSERT_EQ(bar->GetCount(), 2);
  // What a window backend draws: one 24-pixel PNG per button.
  const ui::ToolbarTemplate* resource = bar->GetToolbarResource();
  ASSERT_NE(resource, nullptr);
  ASSERT_EQ(resource->images.size(), 2u);
  EXPECT_NE(resource->images[0], resource->images[1]);
  for (const std::string& image : resource->images) EXPECT_EQ(pngSize(image), std::make_pair(24u, 24u));
  EXPECT_EQ(resource->imageSize, 24);

  ViraDestroyToolbar();
  EXPECT_EQ(ViraToolbar(), nullptr);
  EXPECT_THROW(host::ui::pressToolbarButton(40001), host::ui::UserActionError) << "no button left to press";
  ViraDestroyToolbar();  // a second time does nothing
}

TEST_F(ToolbarTest, AMissingToolbarResourceIsShownAndLeavesNoToolbar) {
  if (ViraLanguageLibrary() != nullptr) GTEST_SKIP() << "a language library of an earlier test brings the toolbar";
  // Without the module's resources no resource module holds toolbar 4008.
  ui::unregisterResourceModule(ViraGermanResources());
  hosttest::TranscriptCapture transcript;
  ViraCreateToolbar();
  ui::registerResourceModule(ViraGermanResources());
  EXPECT_EQ(transcript.text(), "[alert] \"Impossible to load VIRA cadtools toolbar.\"\n");
  EXPECT_EQ(ViraToolbar(), nullptr);
  ViraDestroyToolbar();  // unloading after the failure is harmless
  EXPECT_EQ(ViraToolbar(), nullptr);
}

}  // namespace
