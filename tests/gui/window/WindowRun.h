// Runs cadhost in its window on a virtual X display (Xvfb through xvfb-run), and reads the screenshots it takes.
#pragma once

#include "../../support/ReadFile.h"
#include "../../support/ScratchDir.h"
#include "../../support/ShellRun.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace windowtest {

namespace fs = std::filesystem;

using HostRun = ShellRun;

// A screenshot as 8-bit RGB pixels.
struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgb;
  std::uint32_t at(int x, int y) const {
    const std::size_t i = (static_cast<std::size_t>(y) * width + x) * 3;
    return (std::uint32_t{rgb[i]} << 16) | (std::uint32_t{rgb[i + 1]} << 8) | rgb[i + 2];
  }
};

struct Rect {
  int left = 0, top = 0, right = -1, bottom = -1;  // inclusive
  bool empty() const { return right < left; }
};

class WindowTest : public ::testing::Test {
 protected:
  void SetUp() override;

  // cadhost on `drawing` with `script` and the given options ("--window", "--headless"), under Xvfb when
  // `virtualDisplay`; the drawing is saved to `save` when that is not empty.
  HostRun cadhost(const fs::path& drawing, const std::string& script, const std::string& options, const fs::path& save,
              bool virtualDisplay = true);
  // Keeps a copy of a screenshot in the build tree's screenshots/ folder (the README's pictures come from there).
  void keep(const fs::path& png, const std::string& name);
  // Reads a PNG the run wrote (through ImageMagick's convert); an empty picture when it cannot.
  Picture picture(const fs::path& png);

  static fs::path sitePlan();
  static std::string slurp(const fs::path& file) { return readFile(file); }
  ScratchDir dir_{"vira-window"};
};

// The smallest rectangle holding every pixel of `colour`; empty when there is none.
Rect boundsOf(const Picture& p, std::uint32_t colour, const Rect& within);
// The colour most pixels in `r` have.
std::uint32_t commonestColour(const Picture& p, const Rect& r);
// Pixels in `r` darker than a text's grey (all channels below 100).
int darkPixels(const Picture& p, const Rect& r);
// True when a pixel of `colour` lies within `radius` of (x, y).
bool colourNear(const Picture& p, int x, int y, std::uint32_t colour, int radius = 1);

}  // namespace windowtest
