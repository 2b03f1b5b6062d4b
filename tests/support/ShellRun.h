// Runs shell command lines for tests (cadhost runs, the independent reader's scripts) and collects what
// they wrote and how they ended.
#pragma once

#include "ReadFile.h"

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

struct ShellRun {
  int status = -1;  // the exit status; -1 when the command did not exit by itself
  std::string out;
  std::string err;
};

// The output and the errors go to files of a test's folder.
inline ShellRun runShell(const std::string& command, const std::filesystem::path& dir) {
  const std::filesystem::path out = dir / "out", err = dir / "err";
  const int raw = std::system((command + " >'" + out.string() + "' 2>'" + err.string() + "'").c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFile(out), readFile(err)};
}

// Answers the exit status (-1 when the command could not be started or did not exit by itself); what it
// wrote to its output lands in `output`.
inline int runForOutput(const std::string& command, std::string& output) {
  output.clear();
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return -1;
  char buffer[4096];
  while (const std::size_t n = std::fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, n);
  const int status = ::pclose(pipe);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
