#include "BenchProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

extern char** environ;

namespace bench {

int runProgram(std::vector<std::string> args, std::string& output, const std::vector<std::string>& extraEnv,
               rusage* usage) {
  const std::filesystem::path log =
      std::filesystem::temp_directory_path() / ("vira-bench-" + std::to_string(::getpid()) + ".log");
  std::vector<char*> argv;
  for (std::string& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);
  std::vector<std::string> envStore(extraEnv);
  std::vector<char*> env;
  for (std::string& e : envStore) env.push_back(e.data());
  for (char** e = environ; *e; ++e) env.push_back(*e);
  env.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_adddup2(&actions, 1, 2);
  pid_t pid = 0;
  const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), env.data());
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) return -1;
  int status = 0;
  rusage own{};
  ::wait4(pid, &status, 0, usage ? usage : &own);
  std::ifstream in(log);
  std::ostringstream text;
  text << in.rdbuf();
  output = text.str();
  std::filesystem::remove(log);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

double cpuSeconds(const rusage& u) {
  return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
         static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

double ownPeakBytes() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.starts_with("VmHWM:")) return std::strtod(line.c_str() + 6, nullptr) * 1024.0;
  return 0;
}

double processCpuNow() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

}  // namespace bench
