// The window lives in a library that cadhost opens only for a run with a window: a batch run must not load the
// toolkit at all, and a window library that is missing or broken must end the run with a message, not a crash.
#include "CadhostRun.h"

#include <fstream>

namespace e2e {
namespace {

class WindowLibraryTest : public CadhostTest {
 protected:
  // Runs `cadhost` (a path) with `arguments` and the test's own settings.
  HostRun run(const std::string& environment, const fs::path& cadhost, const std::string& arguments) {
    return runCommand("XDG_CONFIG_HOME='" + configHome().string() + "' " + environment + " '" + cadhost.string() +
                      "' " + arguments);
  }
};

TEST_F(WindowLibraryTest, HeadlessRunLoadsNoToolkit) {
  // The dynamic linker names every file it loads; the demo's transformation runs the module's dialog too.
  const fs::path log = dir_ / "loaded";
  const HostRun r = run("LD_DEBUG=files LD_DEBUG_OUTPUT='" + log.string() + "'", CADHOST_PATH,
                        "'" + sitePlan().string() + "' --headless --module '" + module_ + "' --script '" +
                            (fs::path(VIRA_SOURCE_DIR) / "examples" / "two-pairs.txt").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("14 Zeichenelemente transformiert"), std::string::npos);
  std::string loaded;
  for (const auto& entry : fs::directory_iterator(dir_))
    if (entry.path().filename().string().starts_with("loaded")) loaded += slurp(entry.path());
  ASSERT_NE(loaded.find("libcadhost.so"), std::string::npos) << "the dynamic linker wrote no list of files";
  for (const char* toolkit : {"cadhost_window", "libwx_", "libgtk", "libgdk"})
    EXPECT_EQ(loaded.find(toolkit), std::string::npos) << toolkit << " was loaded by a headless run";
}

TEST_F(WindowLibraryTest, MissingOrBrokenWindowLibraryIsReported) {
#ifndef VIRA_HAVE_WINDOW
  GTEST_SKIP() << "cadhost was built without its window";
#else
  ASSERT_TRUE(fs::exists(fs::path(CADHOST_PATH).parent_path() / "cadhost_window.so"))
      << "the window library is not beside cadhost in the build tree";
  // A copy of cadhost in a folder of its own has no window library beside it. The display is only named: the
  // library is looked for before any display is opened.
  const fs::path folder = dir_ / "bin";
  fs::create_directories(folder);
  fs::copy_file(CADHOST_PATH, folder / "cadhost");
  const fs::path library = folder / "cadhost_window.so";
  const std::string expected = "cadhost: the window library " + library.string() + " cannot be opened: ";
  const std::string arguments = "'" + sitePlan().string() + "' --window --module '" + module_ + "' --save '" +
                                saved().string() + "' --script /dev/null";

  HostRun r = run("DISPLAY=:97", folder / "cadhost", arguments);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find(expected), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("; run with --headless\n"), std::string::npos) << r.err;

  std::ofstream(library, std::ios::binary) << "not a shared object\n";
  r = run("DISPLAY=:97", folder / "cadhost", arguments);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find(expected), std::string::npos) << r.err;
  EXPECT_FALSE(fs::exists(saved()));
#endif
}

}  // namespace
}  // namespace e2e
