// Runs a shell command line (a cadhost run, mostly) with its output and its errors going to files of a
// test's folder, and collects what it wrote and how it ended.
#pragma once

#include "ReadFile.h"

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

struct ShellRun {
  int status = -1;  // the exit status; -1 when the command did not exit by itself
  std::string out;
  std::string err;
};

inline ShellRun runShell(const std::string& command, const std::filesystem::path& dir) {
  const std::filesystem::path out = dir / "out", err = dir / "err";
  const int raw = std::system((command + " >'" + out.string() + "' 2>'" + err.string() + "'").c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFile(out), readFile(err)};
}
