#include "WindowRun.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace windowtest {

void WindowTest::SetUp() {
#ifndef VIRA_HAVE_WINDOW
  GTEST_SKIP() << "cadhost was built without its window";
#else
  if (std::system("command -v xvfb-run >/dev/null 2>&1 && command -v xauth >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "xvfb-run or xauth is missing: no virtual display for the window";
  if (std::system("command -v convert >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "ImageMagick's convert is missing: screenshots cannot be read";
#endif
}

fs::path WindowTest::sitePlan() { return fs::path(VIRA_SOURCE_DIR) / "examples" / "site-plan.dxf"; }

HostRun WindowTest::cadhost(const fs::path& drawing, const std::string& script, const std::string& options,
                        const fs::path& save, bool virtualDisplay) {
  const fs::path scriptFile = dir_ / "script.txt";
  std::ofstream(scriptFile, std::ios::binary) << script;
  // The user's settings live in the test's own folder; the toolkit's leak reports are not the host's.
  std::string command = "XDG_CONFIG_HOME='" + dir_.string() + "' ASAN_OPTIONS=detect_leaks=0 ";
  if (virtualDisplay) command += "xvfb-run -a -s '-screen 0 1280x1024x24' ";
  command += std::string(CADHOST_PATH) + " '" + drawing.string() + "' --module '" + VIRA_MODULE_PATH +
             "' --script '" + scriptFile.string() + "' " + options;
  if (!save.empty()) command += " --save '" + save.string() + "'";
  return runShell(command, dir_);
}

void WindowTest::keep(const fs::path& png, const std::string& name) {
  const fs::path folder = fs::path(VIRA_BINARY_DIR) / "screenshots";
  std::error_code ec;
  fs::create_directories(folder, ec);
  fs::copy_file(png, folder / name, fs::copy_options::overwrite_existing, ec);
}

Picture WindowTest::picture(const fs::path& png) {
  Picture p;
  const fs::path ppm = dir_ / (png.stem().string() + ".ppm");
  if (std::system(("convert '" + png.string() + "' -depth 8 'ppm:" + ppm.string() + "'").c_str()) != 0) return p;
  std::ifstream in(ppm, std::ios::binary);
  std::string magic;
  int maximum = 0;
  in >> magic >> p.width >> p.height >> maximum;
  in.get();
  if (magic != "P6" || maximum != 255 || p.width <= 0 || p.height <= 0) return Picture{};
  p.rgb.resize(static_cast<std::size_t>(p.width) * p.height * 3);
  in.read(reinterpret_cast<char*>(p.rgb.data()), static_cast<std::streamsize>(p.rgb.size()));
  if (!in) return Picture{};
  return p;
}

Rect boundsOf(const Picture& p, std::uint32_t colour, const Rect& within) {
  Rect r{p.width, p.height, -1, -1};
  for (int y = std::max(0, within.top); y <= std::min(p.height - 1, within.bottom); ++y) {
    for (int x = std::max(0, within.left); x <= std::min(p.width - 1, within.right); ++x) {
      if (p.at(x, y) != colour) continue;
      r.left = std::min(r.left, x);
      r.top = std::min(r.top, y);
      r.right = std::max(r.right, x);
      r.bottom = std::max(r.bottom, y);
    }
  }
  return r;
}

std::uint32_t commonestColour(const Picture& p, const Rect& r) {
  std::map<std::uint32_t, int> counts;
  for (int y = std::max(0, r.top); y <= std::min(p.height - 1, r.bottom); ++y)
    for (int x = std::max(0, r.left); x <= std::min(p.width - 1, r.right); ++x) ++counts[p.at(x, y)];
  std::uint32_t best = 0;
  int most = -1;
  for (const auto& [colour, n] : counts)
    if (n > most) {
      best = colour;
      most = n;
    }
  return best;
}

int darkPixels(const Picture& p, const Rect& r) {
  int n = 0;
  for (int y = std::max(0, r.top); y <= std::min(p.height - 1, r.bottom); ++y)
    for (int x = std::max(0, r.left); x <= std::min(p.width - 1, r.right); ++x) {
      const std::uint32_t c = p.at(x, y);
      if (((c >> 16) & 0xFF) < 100 && ((c >> 8) & 0xFF) < 100 && (c & 0xFF) < 100) ++n;
    }
  return n;
}

bool colourNear(const Picture& p, int x, int y, std::uint32_t colour, int radius) {
  for (int dy = -radius; dy <= radius; ++dy)
    for (int dx = -radius; dx <= radius; ++dx) {
      const int px = x + dx, py = y + dy;
      if (px >= 0 && py >= 0 && px < p.width && py < p.height && p.at(px, py) == colour) return true;
    }
  return false;
}

}  // namespace windowtest
