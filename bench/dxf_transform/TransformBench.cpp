// transformEntity alone on the 200,000-entity survey drawing of the DXF store's benchmark (lines,
// lightweight polylines, texts, points), against ezdxf's transformation of the same entities. Reading and
// saving are left out on both sides. The ratio is reported for wall-clock time (ezdxf_per_store) and for
// processor time (ezdxf_per_store_cpu), which stays fair when other work shares the machine.
#include "host/dxf/Document.h"
#include "host/dxf/Transform.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <time.h>

namespace {

namespace fs = std::filesystem;

constexpr int kEntities = 200000;
const fs::path kWork = fs::path(VIRA_BINARY_DIR) / "bench" / "dxf_transform";

// The two-point solution of a survey site: a small turn, a scale close to 1 and a large shift.
dxf::Matrix44 surveyMove() {
  const double a = 0.7 * 3.14159265358979323846 / 180.0, s = 0.9996;
  return dxf::Matrix44{{{s * std::cos(a), -s * std::sin(a), 0, -2200000.25},
                        {s * std::sin(a), s * std::cos(a), 0, 141234.75},
                        {0, 0, s, 12.5},
                        {0, 0, 0, 1}}};
}

std::string runPython(const std::string& args) {
  std::string out;
  std::string command = VIRA_PYTHON;
  command.append(" ").append(args).append(" 2>&1");
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return out;
  std::array<char, 512> buf{};
  while (std::fgets(buf.data(), buf.size(), pipe) != nullptr) out += buf.data();
  if (pclose(pipe) != 0) {
    std::cerr << out << "\n";
    std::exit(1);
  }
  return out;
}

const fs::path& surveyDrawing() {
  static const fs::path file = [] {
    fs::create_directories(kWork);
    const fs::path target = kWork / ("survey-" + std::to_string(kEntities) + ".dxf");
    if (!fs::exists(target)) {
      std::string args = VIRA_SOURCE_DIR;
      args.append("/bench/dxf/make_survey.py ").append(target.string()).append(" ").append(std::to_string(kEntities));
      runPython(args);
    }
    return target;
  }();
  return file;
}

double cpuNow() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

double storeSeconds = 0.0;
double storeCpuSeconds = 0.0;

void BM_TransformEntities(benchmark::State& state) {
  const dxf::Matrix44 m = surveyMove();
  std::string error;
  double best = 1e300, bestCpu = 1e300;
  long refused = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto doc = dxf::Document::load(surveyDrawing(), error);
    if (!doc) {
      state.SkipWithError(error.c_str());
      break;
    }
    const auto entities = doc->modelSpace();
    state.ResumeTiming();
    const auto start = std::chrono::steady_clock::now();
    const double cpu = cpuNow();
    refused = 0;
    for (dxf::Entity* e : entities)
      if (dxf::transformEntity(*e, m) != dxf::TransformStatus::Ok) ++refused;
    bestCpu = std::min(bestCpu, cpuNow() - cpu);
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    benchmark::DoNotOptimize(refused);
    state.PauseTiming();
    doc.reset();  // freeing the drawing is not part of the transformation
    state.ResumeTiming();
  }
  storeSeconds = best;
  storeCpuSeconds = bestCpu;
  state.counters["entities"] = kEntities;
  state.counters["not_transformed"] = static_cast<double>(refused);
}
BENCHMARK(BM_TransformEntities)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_EzdxfTransformEntities(benchmark::State& state) {
  double seconds = 0.0, cpuSeconds = 0.0;
  for (auto _ : state) {
    std::string args = VIRA_SOURCE_DIR;
    args.append("/bench/dxf_transform/ezdxf_transform_only.py ").append(surveyDrawing().string());
    for (const auto& row : surveyMove().m)
      for (double v : row) args.append(" ").append(dxf::formatNumber(v));
    const std::string out = runPython(args);
    if (std::sscanf(out.c_str(), "%lf %lf", &seconds, &cpuSeconds) != 2) {
      state.SkipWithError(out.c_str());
      break;
    }
    state.SetIterationTime(seconds);
  }
  state.counters["ezdxf_s"] = seconds;
  state.counters["store_s"] = storeSeconds;
  state.counters["ezdxf_per_store"] = storeSeconds > 0.0 ? seconds / storeSeconds : 0.0;
  state.counters["ezdxf_cpu_s"] = cpuSeconds;
  state.counters["store_cpu_s"] = storeCpuSeconds;
  state.counters["ezdxf_per_store_cpu"] = storeCpuSeconds > 0.0 ? cpuSeconds / storeCpuSeconds : 0.0;
}
BENCHMARK(BM_EzdxfTransformEntities)->Unit(benchmark::kMillisecond)->Iterations(1)->UseManualTime();

}  // namespace
