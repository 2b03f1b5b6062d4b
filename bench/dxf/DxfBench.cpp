// The DXF store's whole job on two survey drawings: read, transform every model-space entity (keeping the
// undo journal as the host does), save. Measured against
//   - the bare tag pass of the same drawing in the same run (TagPass.h: read every tag, shift every
//     coordinate, write every tag, no object model), the floor the store's job is compared with;
//   - ezdxf doing the same three steps.
// Figures: the best and the median of the runs, wall clock and processor time (which a machine busy with
// other work disturbs less), the job per bare pass, and the peak memory of the store's job and of the bare
// pass against the file size, each measured in a fresh process (this program started again with
// VIRA_DXF_BENCH_CHILD set, which reports its own high-water mark) so that nothing the benchmark itself
// holds is counted. Every output is read
// back by the store and must hold as many model-space entities as the input, so that no benchmark passes
// on a broken file. Both saves flush the file to disk; ezdxf's does not.
//
// The drawings are written once into the build tree:
//   Survey200k: make_survey.py, 200,000 lines, light-weight polylines, texts and points; a two-pair move
//               (turn, grid scale, shift).
//   SiteSurvey: make_site_survey.py, block references with attributes, hatches, splines, MTEXT,
//               polylines and 3D polylines; a three-pair spatial similarity (turn, slight tilt, scale,
//               shift).
// Run one of them alone with --benchmark_filter=Survey200k or --benchmark_filter=SiteSurvey.
#include "BenchProcess.h"
#include "TagPass.h"
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kWork = fs::path(VIRA_BINARY_DIR) / "bench" / "dxf";
constexpr double kPi = 3.14159265358979323846;

// Two control points: a turn about the vertical, the grid's scale factor, a large shift.
dxf::Matrix44 twoPairMove() {
  const double a = 0.7 * kPi / 180.0, s = 0.9996;
  return dxf::Matrix44{{{s * std::cos(a), -s * std::sin(a), 0, -2200000.25},
                        {s * std::sin(a), s * std::cos(a), 0, 141234.75},
                        {0, 0, s, 12.5},
                        {0, 0, 0, 1}}};
}

// Three control points: the spatial solution also tilts the drawing a little (here 0.002 gon about the
// easting axis) besides the turn, the scale and the shift.
dxf::Matrix44 threePairMove() {
  const double a = 0.7 * kPi / 180.0, t = 0.002 * kPi / 200.0, s = 0.9996;
  const double ca = std::cos(a), sa = std::sin(a), ct = std::cos(t), st = std::sin(t);
  // R = Rz(a) * Rx(t)
  return dxf::Matrix44{{{s * ca, -s * sa * ct, s * sa * st, -2200000.25},
                        {s * sa, s * ca * ct, -s * ca * st, 141234.75},
                        {0, s * st, s * ct, 12.5},
                        {0, 0, 0, 1}}};
}

struct Drawing {
  std::string name;
  std::vector<std::string> generator;  // script and its arguments after the output file
  dxf::Matrix44 move;
};

const std::vector<Drawing>& drawings() {
  static const std::vector<Drawing> all{
      {"Survey200k", {"make_survey.py", "200000"}, twoPairMove()},
      {"SiteSurvey", {"make_site_survey.py"}, threePairMove()},
  };
  return all;
}

fs::path drawingFile(const Drawing& d) {
  std::string file = d.name;
  if (d.name == "Survey200k") file = "survey-200000";  // the name the transformation benchmark shares
  const fs::path target = kWork / (file + ".dxf");
  if (fs::exists(target)) return target;
  fs::create_directories(kWork);
  const fs::path fresh = kWork / (file + "-new-" + std::to_string(::getpid()) + ".dxf");
  std::vector<std::string> args{VIRA_PYTHON, std::string(VIRA_SOURCE_DIR "/bench/dxf/") + d.generator[0],
                                fresh.string()};
  args.insert(args.end(), d.generator.begin() + 1, d.generator.end());
  std::string output;
  if (bench::runProgram(args, output) != 0) {
    std::cerr << "cannot write the drawing " << target << ": " << output << "\n";
    std::exit(1);
  }
  fs::rename(fresh, target);
  return target;
}

// The store's three steps; returns the number of entities that did not transform, or -1 on a load/save
// failure.
long storeJob(const fs::path& in, const fs::path& out, const dxf::Matrix44& m) {
  std::string error;
  auto doc = dxf::Document::load(in, error);
  if (!doc) {
    std::cerr << error << "\n";
    return -1;
  }
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

bool tagPass(const fs::path& in, const fs::path& out) {
  bench::TagPassCount count;
  std::string error;
  if (bench::shiftEveryCoordinate(in, out, bench::kSurveyShift, count, error)) return true;
  std::cerr << error << "\n";
  return false;
}

// The number of model-space entities the store reads from the file, -1 when it cannot read it.
long modelSpaceCount(const fs::path& file) {
  std::string error;
  auto doc = dxf::Document::load(file, error);
  if (!doc) {
    std::cerr << "the output does not read back: " << error << "\n";
    return -1;
  }
  return static_cast<long>(doc->modelSpace().size());
}

std::string matrixText(const dxf::Matrix44& m) {
  std::string text;
  for (const auto& row : m.m)
    for (double v : row) text.append(dxf::formatNumber(v)).append(" ");
  return text;
}

// The child process of the memory measurement runs before main and never returns. Its task is
// "store\nIN\nOUT\nM00 M01 ... M33" or "tags\nIN\nOUT".
const bool kChild = [] {
  const char* task = std::getenv("VIRA_DXF_BENCH_CHILD");
  if (!task) return false;
  std::istringstream lines(task);
  std::string kind, in, out, numbers;
  std::getline(lines, kind);
  std::getline(lines, in);
  std::getline(lines, out);
  std::getline(lines, numbers);
  bool ok = false;
  if (kind == "tags") {
    ok = tagPass(in, out);
  } else {
    dxf::Matrix44 m{};
    std::istringstream values(numbers);
    for (auto& row : m.m)
      for (double& v : row) values >> v;
    ok = storeJob(in, out, m) >= 0;
  }
  std::printf("peak %.0f\n", bench::ownPeakBytes());
  std::fflush(stdout);
  std::_Exit(ok ? 0 : 1);
}();

struct Timing {
  std::vector<double> wall, cpu;
  void add(double w, double c) {
    wall.push_back(w);
    cpu.push_back(c);
  }
  static double best(std::vector<double> v) { return v.empty() ? 0 : *std::min_element(v.begin(), v.end()); }
  static double median(std::vector<double> v) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
  }
};

struct Figures {
  long entities = -1;  // model-space entities of the input, as the store reads them
  Timing store, bare;
  double ezdxfSeconds = 0, ezdxfCpuSeconds = 0;
};

Figures& figuresOf(const Drawing& d) {
  static std::vector<Figures> all(drawings().size());
  return all[static_cast<std::size_t>(&d - drawings().data())];
}

long inputEntities(const Drawing& d) {
  Figures& f = figuresOf(d);
  if (f.entities < 0) f.entities = modelSpaceCount(drawingFile(d));
  return f.entities;
}

// Fails the benchmark when `out` does not read back with the input's number of model-space entities.
bool readsBack(benchmark::State& state, const Drawing& d, const fs::path& out) {
  const long found = modelSpaceCount(out);
  if (found == inputEntities(d)) return true;
  state.SkipWithError(("the output " + out.string() + " holds " + std::to_string(found) + " model-space entities, the input " +
                       std::to_string(inputEntities(d)))
                          .c_str());
  return false;
}

template <class Job>
void timeJob(benchmark::State& state, Timing& timing, Job job) {
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    const double cpu = bench::processCpuNow();
    if (!job()) {
      state.SkipWithError("the job failed");
      return;
    }
    timing.add(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
               bench::processCpuNow() - cpu);
  }
}

void storeJobBench(benchmark::State& state, const Drawing* d) {
  const fs::path in = drawingFile(*d), out = kWork / (d->name + "-store-out.dxf");
  inputEntities(*d);
  long refused = 0;
  timeJob(state, figuresOf(*d).store, [&] { return (refused = storeJob(in, out, d->move)) >= 0; });
  if (!readsBack(state, *d, out)) return;
  state.counters["entities"] = static_cast<double>(inputEntities(*d));
  state.counters["not_transformed"] = static_cast<double>(refused);
}

void bareTagPassBench(benchmark::State& state, const Drawing* d) {
  const fs::path in = drawingFile(*d), out = kWork / (d->name + "-tags-out.dxf");
  timeJob(state, figuresOf(*d).bare, [&] { return tagPass(in, out); });
  readsBack(state, *d, out);
}

void ezdxfBench(benchmark::State& state, const Drawing* d) {
  const fs::path in = drawingFile(*d), out = kWork / (d->name + "-ezdxf-out.dxf");
  Figures& f = figuresOf(*d);
  for (auto _ : state) {
    std::vector<std::string> args{VIRA_PYTHON, VIRA_SOURCE_DIR "/bench/dxf/ezdxf_steps.py", in.string(), out.string()};
    for (const auto& row : d->move.m)
      for (double v : row) args.push_back(dxf::formatNumber(v));
    std::string output;
    rusage usage{};
    if (bench::runProgram(args, output, {}, &usage) != 0) {
      state.SkipWithError(("ezdxf failed: " + output).c_str());
      return;
    }
    f.ezdxfCpuSeconds = bench::cpuSeconds(usage);
    f.ezdxfSeconds = std::atof(output.c_str());
    state.SetIterationTime(f.ezdxfSeconds);
  }
  readsBack(state, *d, out);
}

// The peak memory of one job in a fresh process, in bytes; its processor time into `cpu`.
double peakOfChild(benchmark::State& state, const std::string& task, double& cpu) {
  std::string output;
  rusage usage{};
  if (bench::runProgram({"/proc/self/exe"}, output, {"VIRA_DXF_BENCH_CHILD=" + task}, &usage) != 0) {
    state.SkipWithError(("the measuring process failed: " + output).c_str());
    return 0;
  }
  cpu = bench::cpuSeconds(usage);
  const auto at = output.rfind("peak ");
  return at == std::string::npos ? 0 : std::atof(output.c_str() + at + 5);
}

// Runs last for its drawing and reports the figures of all its benchmarks.
void peakMemoryBench(benchmark::State& state, const Drawing* d) {
  const fs::path in = drawingFile(*d);
  const fs::path storeOut = kWork / (d->name + "-store-memory-out.dxf");
  const fs::path tagsOut = kWork / (d->name + "-tags-memory-out.dxf");
  double storePeak = 0, tagsPeak = 0, storeChildCpu = 0, tagsChildCpu = 0;
  for (auto _ : state) {
    storePeak = peakOfChild(state, "store\n" + in.string() + "\n" + storeOut.string() + "\n" + matrixText(d->move),
                            storeChildCpu);
    tagsPeak = peakOfChild(state, "tags\n" + in.string() + "\n" + tagsOut.string(), tagsChildCpu);
  }
  if (!readsBack(state, *d, storeOut) || !readsBack(state, *d, tagsOut)) return;
  const Figures& f = figuresOf(*d);
  const double file = static_cast<double>(fs::file_size(in)), mib = 1 << 20;
  const double store = Timing::best(f.store.wall), bare = Timing::best(f.bare.wall);
  const double storeCpu = Timing::best(f.store.cpu), bareCpu = Timing::best(f.bare.cpu);
  auto& c = state.counters;
  c["file_MiB"] = file / mib;
  c["store_s"] = store;
  c["store_median_s"] = Timing::median(f.store.wall);
  c["store_cpu_s"] = storeCpu;
  c["bare_s"] = bare;
  c["bare_median_s"] = Timing::median(f.bare.wall);
  c["bare_cpu_s"] = bareCpu;
  c["job_per_bare"] = bare > 0 ? store / bare : 0;
  c["job_per_bare_cpu"] = bareCpu > 0 ? storeCpu / bareCpu : 0;
  c["store_peak_MiB"] = storePeak / mib;
  c["store_peak_per_file"] = storePeak / file;
  c["bare_peak_MiB"] = tagsPeak / mib;
  c["bare_peak_per_file"] = tagsPeak / file;
  c["store_child_cpu_s"] = storeChildCpu;  // the whole fresh process: start, job, exit
  c["bare_child_cpu_s"] = tagsChildCpu;
  if (f.ezdxfSeconds > 0) {
    c["ezdxf_s"] = f.ezdxfSeconds;
    c["ezdxf_per_store"] = store > 0 ? f.ezdxfSeconds / store : 0;
    c["ezdxf_cpu_s"] = f.ezdxfCpuSeconds;  // its process, the interpreter's start included
    c["ezdxf_per_store_cpu"] = storeChildCpu > 0 ? f.ezdxfCpuSeconds / storeChildCpu : 0;
  }
}

const bool kRegistered = [] {
  for (const Drawing& d : drawings()) {
    benchmark::RegisterBenchmark((d.name + "/StoreJob").c_str(), storeJobBench, &d)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(5);
    benchmark::RegisterBenchmark((d.name + "/BareTagPass").c_str(), bareTagPassBench, &d)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(5);
    benchmark::RegisterBenchmark((d.name + "/Ezdxf").c_str(), ezdxfBench, &d)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark((d.name + "/PeakMemory").c_str(), peakMemoryBench, &d)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
  }
  return true;
}();

}  // namespace
