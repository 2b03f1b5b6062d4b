// The DXF store against ezdxf on a 200,000-entity survey drawing: read it, transform every model-space
// entity (keeping the undo journal as the host does), save it. Reports both times and their ratio (wall
// clock, and processor time, which a machine busy with other work disturbs less), and the store's peak
// memory against the file size. The store's save includes flushing the file to disk, which ezdxf's does
// not do.
//
// The drawing is written once by make_survey.py (ezdxf) and kept in the build tree. The peak memory is
// measured in a fresh process (this program started again with VIRA_DXF_BENCH_CHILD set), so that nothing
// the benchmark itself holds is counted.
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;

constexpr int kEntities = 200000;
const fs::path kWork = fs::path(VIRA_BINARY_DIR) / "bench" / "dxf";

dxf::Matrix44 surveyMove() {
  const double a = 0.7 * M_PI / 180.0, s = 0.9996;
  return dxf::Matrix44{{{s * std::cos(a), -s * std::sin(a), 0, -2200000.25},
                        {s * std::sin(a), s * std::cos(a), 0, 141234.75},
                        {0, 0, s, 12.5},
                        {0, 0, 0, 1}}};
}

// Runs a program; returns its exit status and what it printed.
int run(std::vector<std::string> args, std::string& output, const std::vector<std::string>& extraEnv = {},
        rusage* usage = nullptr) {
  const fs::path log = kWork / ("run-" + std::to_string(::getpid()) + ".log");
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
  fs::remove(log);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

const fs::path& surveyDrawing() {
  static const fs::path file = [] {
    fs::create_directories(kWork);
    const fs::path target = kWork / ("survey-" + std::to_string(kEntities) + ".dxf");
    if (!fs::exists(target)) {
      const fs::path fresh = kWork / ("survey-new-" + std::to_string(::getpid()) + ".dxf");
      std::string output;
      if (run({VIRA_PYTHON, VIRA_SOURCE_DIR "/bench/dxf/make_survey.py", fresh.string(), std::to_string(kEntities)},
              output) != 0) {
        std::cerr << "cannot write the survey drawing: " << output << "\n";
        std::exit(1);
      }
      fs::rename(fresh, target);
    }
    return target;
  }();
  return file;
}

// Our three steps; returns the number of entities that did not transform, or -1 on a load/save failure.
long storeSteps(const fs::path& in, const fs::path& out) {
  std::string error;
  auto doc = dxf::Document::load(in, error);
  if (!doc) {
    std::cerr << error << "\n";
    return -1;
  }
  const dxf::Matrix44 m = surveyMove();
  long refused = 0;
  // As the host runs a command: each entity's state goes to the undo journal before it changes, and a
  // dimension or table takes its block along.
  dxf::ChangeJournal& journal = doc->journal();
  journal.beginStep("move");
  for (dxf::Entity* e : doc->modelSpace()) {
    journal.recordChange(*e);
    if (dxf::transformInDrawing(*doc, *e, m) != dxf::TransformStatus::Ok) ++refused;
  }
  journal.endStep();
  if (!doc->save(out, error)) {
    std::cerr << error << "\n";
    return -1;
  }
  return refused;
}

// The child process of the memory measurement runs before main and never returns.
const bool kChild = [] {
  const char* args = std::getenv("VIRA_DXF_BENCH_CHILD");
  if (!args) return false;
  const std::string s(args);
  const auto bar = s.find('|');
  std::_Exit(storeSteps(s.substr(0, bar), s.substr(bar + 1)) < 0 ? 1 : 0);
}();

struct Figures {
  double storeSeconds = 0;     // wall clock, best of the runs
  double ezdxfSeconds = 0;     // wall clock of the three steps, as ezdxf's process measured them
  double storeCpuSeconds = 0;  // processor time of the measuring process
  double ezdxfCpuSeconds = 0;  // processor time of ezdxf's process, its start included
  double peakBytes = 0;
};

double cpuSeconds(const rusage& u) {
  return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
         static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}
Figures figures;

void BM_Store_LoadTransformSave(benchmark::State& state) {
  const fs::path& in = surveyDrawing();
  const fs::path out = kWork / "survey-store-out.dxf";
  double best = 1e300;
  long refused = 0;
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    refused = storeSteps(in, out);
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    if (refused < 0) state.SkipWithError("load or save failed");
  }
  figures.storeSeconds = best;
  state.counters["entities"] = kEntities;
  state.counters["not_transformed"] = static_cast<double>(refused);
}
BENCHMARK(BM_Store_LoadTransformSave)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Ezdxf_LoadTransformSave(benchmark::State& state) {
  const fs::path& in = surveyDrawing();
  const fs::path out = kWork / "survey-ezdxf-out.dxf";
  for (auto _ : state) {
    std::vector<std::string> args{VIRA_PYTHON, VIRA_SOURCE_DIR "/bench/dxf/ezdxf_steps.py", in.string(), out.string()};
    for (const auto& row : surveyMove().m)
      for (double v : row) args.push_back(dxf::formatNumber(v));
    std::string output;
    rusage usage{};
    if (run(args, output, {}, &usage) != 0) {
      state.SkipWithError(("ezdxf failed: " + output).c_str());
      break;
    }
    figures.ezdxfCpuSeconds = cpuSeconds(usage);
    figures.ezdxfSeconds = std::atof(output.c_str());
    state.SetIterationTime(figures.ezdxfSeconds);
  }
}
BENCHMARK(BM_Ezdxf_LoadTransformSave)->Unit(benchmark::kMillisecond)->Iterations(1)->UseManualTime();

void BM_Store_PeakMemory(benchmark::State& state) {
  const fs::path& in = surveyDrawing();
  const fs::path out = kWork / "survey-memory-out.dxf";
  for (auto _ : state) {
    std::string output;
    rusage usage{};
    const int rc =
        run({"/proc/self/exe"}, output, {"VIRA_DXF_BENCH_CHILD=" + in.string() + "|" + out.string()}, &usage);
    if (rc != 0) {
      state.SkipWithError(("the measuring process failed: " + output).c_str());
      break;
    }
    figures.peakBytes = static_cast<double>(usage.ru_maxrss) * 1024.0;
    figures.storeCpuSeconds = cpuSeconds(usage);
  }
  const double fileBytes = static_cast<double>(fs::file_size(in));
  state.counters["file_MiB"] = fileBytes / (1 << 20);
  state.counters["peak_MiB"] = figures.peakBytes / (1 << 20);
  state.counters["peak_per_file_size"] = figures.peakBytes / fileBytes;
  state.counters["store_s"] = figures.storeSeconds;
  state.counters["ezdxf_s"] = figures.ezdxfSeconds;
  state.counters["ezdxf_per_store"] = figures.storeSeconds > 0 ? figures.ezdxfSeconds / figures.storeSeconds : 0;
  state.counters["store_cpu_s"] = figures.storeCpuSeconds;
  state.counters["ezdxf_cpu_s"] = figures.ezdxfCpuSeconds;
  state.counters["ezdxf_per_store_cpu"] =
      figures.storeCpuSeconds > 0 ? figures.ezdxfCpuSeconds / figures.storeCpuSeconds : 0;
}
BENCHMARK(BM_Store_PeakMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
