#include "DxfTestSupport.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace dxftest {

namespace fs = std::filesystem;

int runPython(std::vector<std::string> args, std::string& output) {
  const fs::path log = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf" / ("python-" + std::to_string(::getpid()) + ".log");
  args.insert(args.begin(), VIRA_PYTHON);
  std::vector<char*> argv;
  for (std::string& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_adddup2(&actions, 1, 2);
  pid_t pid = 0;
  const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) {
    output = "cannot start " + args[0];
    return -1;
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  output = readFile(log);
  fs::remove(log);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

fs::path scratchDir(const std::string& name) {
  const fs::path dir = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf" / "scratch" / name;
  fs::remove_all(dir);
  fs::create_directories(dir);
  return dir;
}

const std::vector<fs::path>& corpus() {
  // Generated once for all test processes of a run: into a private directory first, then renamed into
  // place, so that tests running side by side never see a half-written corpus. The name follows the
  // generator's content, so a changed generator makes a new corpus.
  static const std::vector<fs::path> files = [] {
    const std::string script = std::string(VIRA_SOURCE_DIR) + "/tests/dxf/make_corpus.py";
    const fs::path root = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf" / "scratch";
    const fs::path dir = root / ("corpus-" + std::to_string(std::hash<std::string>{}(readFile(script))));
    if (!fs::exists(dir)) {
      const fs::path fresh = scratchDir("corpus-new-" + std::to_string(::getpid()));
      std::string output;
      const int rc = runPython({script, fresh.string()}, output);
      EXPECT_EQ(rc, 0) << output;
      std::error_code ec;
      fs::rename(fresh, dir, ec);
      fs::remove_all(fresh, ec);
    }
    std::vector<fs::path> found;
    for (const char* version : {"R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"})
      found.push_back(dir / (std::string("corpus_") + version + ".dxf"));
    return found;
  }();
  return files;
}

int checkDrawing(const std::vector<std::string>& args, std::string& output) {
  std::vector<std::string> all{std::string(VIRA_SOURCE_DIR) + "/tests/dxf/check_drawing.py"};
  all.insert(all.end(), args.begin(), args.end());
  return runPython(all, output);
}

void writeFile(const fs::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

}  // namespace dxftest
