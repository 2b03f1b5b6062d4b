// Mutated drawings through whole runs of the host: cadhost opens each one, the module transforms it (a
// similarity, a matrix that is none, one whose results overflow, with an undo between), and the drawing is
// saved. Nothing may crash, hang or draw a sanitizer report; a run that succeeds must have saved a drawing
// that opens again and holds no more numbers that are not finite than the drawing it started from; a run
// that fails must have left the file it would have saved untouched.
//
// The seed is fixed, so a run is repeatable. Longer runs (the figures in the documentation come from one):
//   VIRA_MUTATION_SECONDS=1200 VIRA_MUTATION_SEED=7 build/asan/tests/mutation/test_mutation
// Drawings that fail a check are kept in the build tree under mutation-failures/.
#include "host/dxf/Document.h"
#include "tests/support/ReadFile.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kUnderSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kUnderSanitizer = true;
#else
constexpr bool kUnderSanitizer = false;
#endif
#else
constexpr bool kUnderSanitizer = false;
#endif

namespace {

namespace fs = std::filesystem;

void spill(const fs::path& p, const std::string& bytes) { std::ofstream(p, std::ios::binary) << bytes; }

long envNumber(const char* name, long fallback) {
  const char* v = std::getenv(name);
  return v && *v ? std::atol(v) : fallback;
}

// The drawings mutations start from: the example, the reader's fuzzing seeds and, where it is present,
// the corpus of drawings written by other CAD programs (small ones only, to keep runs quick).
std::vector<std::string> seeds() {
  std::vector<fs::path> files = {fs::path(VIRA_SOURCE_DIR) / "examples" / "site-plan.dxf"};
  for (const fs::path& dir : {fs::path(VIRA_SOURCE_DIR) / "tests" / "fuzz" / "seeds",
                              fs::path(VIRA_SOURCE_DIR).parent_path() / "shared" / "dxf-corpus"}) {
    std::error_code ec;
    for (const auto& e : fs::directory_iterator(dir, ec))
      if (e.path().extension() == ".dxf" && e.file_size() < (1u << 20)) files.push_back(e.path());
  }
  std::sort(files.begin() + 1, files.end());
  // Only drawings the host reads as they are: mutating one it refuses anyway tests nothing more.
  std::vector<std::string> out;
  for (const fs::path& f : files) {
    std::string error;
    std::string bytes = readFile(f);
    if (dxf::Document::parse(bytes, f.string(), error)) out.push_back(std::move(bytes));
  }
  return out;
}

std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t pos = 0;
  while (pos < text.size()) {
    std::size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size() - 1;
    lines.push_back(text.substr(pos, end + 1 - pos));
    pos = end + 1;
  }
  return lines;
}

std::string joinLines(const std::vector<std::string>& lines) {
  std::string s;
  for (const std::string& l : lines) s += l;
  return s;
}

// Values that break arithmetic: overflow when scaled, no number at all, or at the edges of a double.
const char* const kNastyValues[] = {"1e308", "-1.7976931348623157e308", "1e200", "1.3e154", "4e-320", "nan",
                                    "inf", "-inf", "", "1e999", "99999999999999999999", "0x10", "  12 ",
                                    "1.5.5", "-0", "2147483648", "-2147483649", "1e-400"};

// Mutations work on tags (a code line and its value line) so that most drawings still read and reach the
// transformation; one in ten also cuts or shifts the lines themselves.
std::string mutate(const std::string& seed, std::mt19937& rng) {
  const std::vector<std::string> lines = splitLines(seed);
  if (lines.size() < 4) return seed;
  std::vector<std::pair<std::string, std::string>> tags;
  for (std::size_t i = 0; i + 1 < lines.size(); i += 2) tags.emplace_back(lines[i], lines[i + 1]);
  auto pick = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
  // Half the edits go to the entities, which the transformation reads; the rest anywhere.
  auto trimmedValue = [&](std::size_t i) { return tags[i].second.substr(0, tags[i].second.find_first_of("\r\n")); };
  std::size_t first = 0, last = 0;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (first == 0 && trimmedValue(i) == "ENTITIES") first = i;
    if (first != 0 && i > first && trimmedValue(i) == "ENDSEC") {
      last = i;
      break;
    }
  }
  const int edits = 1 + static_cast<int>(pick(3));
  for (int k = 0; k < edits && tags.size() >= 2; ++k) {
    const bool inEntities = last > first + 1 && last <= tags.size() && pick(2) == 0;
    const std::size_t i = inEntities ? first + 1 + pick(last - first - 1) : pick(tags.size());
    std::string& value = tags[i].second;
    const std::string eol = value.size() >= 2 && value[value.size() - 2] == '\r' ? "\r\n" : "\n";
    switch (pick(8)) {
      case 0:
      case 1: value = std::string(kNastyValues[pick(std::size(kNastyValues))]) + eol; break;
      case 2: tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i)); break;  // a y coordinate gone
      case 3: tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(i), tags[pick(tags.size())]); break;
      case 4: std::swap(tags[i], tags[pick(tags.size())]); break;
      case 5:
        if (value.size() > 1) value[pick(value.size() - 1)] ^= static_cast<char>(1u << pick(7));
        break;
      default: {  // a number pushed towards the largest double
        const std::string trimmed = value.substr(0, value.find_first_of("\r\n"));
        char* end = nullptr;
        const double v = std::strtod(trimmed.c_str(), &end);
        if (end != trimmed.c_str() && *end == '\0') {
          // Half of them close enough to the largest double that a scale of 1.5 or a shift overflows.
          const double size = pick(2) == 0 ? std::pow(10.0, static_cast<double>(150 + pick(158)))
                                           : 1e307 * static_cast<double>(1 + pick(17));
          std::ostringstream big;
          big.precision(17);
          big << (v < 0 ? -size : size);
          value = big.str() + eol;
        }
      }
    }
  }
  std::string out;
  for (const auto& [code, value] : tags) out += code + value;
  if (lines.size() % 2) out += lines.back();
  if (pick(10) == 0) {
    std::vector<std::string> raw = splitLines(out);
    const std::size_t i = pick(raw.size());
    if (pick(2) == 0)
      raw.resize(i + 1);  // cut short
    else
      raw.erase(raw.begin() + static_cast<std::ptrdiff_t>(i));  // every line after it shifted
    out = joinLines(raw);
  }
  return out;
}

// Scripts of the module's transformation: what a surveyor types, with matrices that are kind and unkind.
const char* const kScripts[] = {
    // two pairs, scaled: a similarity
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 100 200 5\n10,0,0\n@dialog 4000 set 4008 100 215 5\n"
    "@dialog 4000 check 4015 1\n@dialog 4000 click 1\n",
    // the same, undone, then three pairs without scale: no similarity
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 100 200 5\n10,0,0\n@dialog 4000 set 4008 100 215 5\n"
    "@dialog 4000 check 4015 1\n@dialog 4000 click 1\nU\n"
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 1 2 3\n10,0,0\n@dialog 4000 set 4008 11 3 3\n"
    "0,10,0\n@dialog 4000 set 4010 0 12 3\n@dialog 4000 click 1\n",
    // a shift so large that coordinates overflow, then a modest one
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 1.7e308 0 0\n@dialog 4000 click 1\n"
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 5 5 0\n@dialog 4000 click 1\n",
    // a scale of 1e300 and an undo of whatever stood
    "_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 0 0 0\n1,0,0\n@dialog 4000 set 4008 1e300 0 0\n"
    "@dialog 4000 check 4015 1\n@dialog 4000 click 1\nU\nU\n",
};

struct Figures {
  long runs = 0, crashes = 0, hangs = 0, sanitizerReports = 0, unreopenable = 0, moreNotFinite = 0,
       changedAfterFailure = 0, failedRuns = 0;
  bool clean() const {
    return crashes + hangs + sanitizerReports + unreopenable + moreNotFinite + changedAfterFailure == 0;
  }
};

// Numbers of the model space (reals by their group code) that are not finite; -1 when it does not open.
long notFinite(const std::string& bytes) {
  std::string error;
  auto doc = dxf::Document::parse(bytes, "drawing", error);
  if (!doc) return -1;
  long count = 0;
  for (const dxf::Entity* e : doc->modelSpace()) {
    auto look = [&count](const dxf::Entity& r) {
      for (std::size_t i = 0; i < r.tags.size(); ++i) {
        const int c = r.tags.code(i);
        if ((c >= 10 && c <= 59) || (c >= 110 && c <= 149) || (c >= 210 && c <= 239) || (c >= 1010 && c <= 1059))
          if (auto v = r.tags.number(i); v && !std::isfinite(*v)) ++count;
      }
    };
    look(*e);
    for (const dxf::Entity& c : e->children) look(c);
  }
  return count;
}

struct HostRun {
  int status = 0;
  bool hung = false;
  std::string err;
};

HostRun cadhost(const fs::path& dir, const fs::path& drawing, const fs::path& script, const fs::path& saved) {
  std::vector<std::string> args = {CADHOST_PATH, drawing.string(), "--module", VIRA_MODULE_PATH, "--script",
                                   script.string(), "--save", saved.string()};
  std::vector<char*> argv;
  for (std::string& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, (dir / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  // Each run with a configuration of its own, as a fresh user would have, except that the module's update
  // check goes to a port on this machine that nobody listens on.
  fs::create_directories(dir / "config" / "TRELLANOVA 10");
  std::ofstream(dir / "config" / "TRELLANOVA 10" / "registry.ini") << "[Platform]\nUpdateServer=127.0.0.1:9\n";
  std::vector<std::string> envStore = {"XDG_CONFIG_HOME=" + (dir / "config").string()};
  for (char** e = environ; *e; ++e)
    if (std::string(*e).rfind("XDG_CONFIG_HOME=", 0) != 0) envStore.emplace_back(*e);
  std::vector<char*> env;
  for (std::string& e : envStore) env.push_back(e.data());
  env.push_back(nullptr);
  pid_t pid = 0;
  HostRun run;
  if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), env.data()) != 0) {
    posix_spawn_file_actions_destroy(&actions);
    run.status = -1;
    return run;
  }
  posix_spawn_file_actions_destroy(&actions);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (::waitpid(pid, &run.status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > deadline) {
      ::kill(pid, SIGKILL);
      ::waitpid(pid, &run.status, 0);
      run.hung = true;
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  run.err = readFile(dir / "err");
  return run;
}

TEST(WholeRunMutation, MutatedDrawingsNeverCrashHangOrLeaveADamagedFile) {
  const std::vector<std::string> start = seeds();
  const long seed = envNumber("VIRA_MUTATION_SEED", 20261123);
  // Under the sanitizers a run takes about ten times as long; the suite keeps to about a minute either way.
  const long maxRuns = envNumber("VIRA_MUTATION_RUNS", kUnderSanitizer ? 60 : 150);
  const long seconds = envNumber("VIRA_MUTATION_SECONDS", 0);
  const bool verbose = envNumber("VIRA_MUTATION_VERBOSE", 0) != 0;
  std::mt19937 rng(static_cast<std::mt19937::result_type>(seed));
  const fs::path dir = fs::path(VIRA_BINARY_DIR) / ("mutation-" + std::to_string(::getpid()));
  const fs::path kept = fs::path(VIRA_BINARY_DIR) / "mutation-failures";
  fs::create_directories(dir);
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);

  Figures f;
  const std::string sentinel = "the drawing saved before this run\n";
  for (long n = 0; seconds > 0 ? std::chrono::steady_clock::now() < until : n < maxRuns; ++n) {
    const std::string& from = start[static_cast<std::size_t>(n) % start.size()];
    const std::string input = mutate(from, rng);
    const char* script = kScripts[std::uniform_int_distribution<std::size_t>(0, std::size(kScripts) - 1)(rng)];
    spill(dir / "in.dxf", input);
    spill(dir / "script.txt", script);
    spill(dir / "out.dxf", sentinel);
    const HostRun run = cadhost(dir, dir / "in.dxf", dir / "script.txt", dir / "out.dxf");
    ++f.runs;

    std::string trouble;
    if (run.hung) {
      ++f.hangs;
      trouble = "hang";
    } else if (WIFSIGNALED(run.status)) {
      ++f.crashes;
      trouble = "crash (signal " + std::to_string(WTERMSIG(run.status)) + ")";
    }
    if (run.err.find("Sanitizer") != std::string::npos || run.err.find("runtime error:") != std::string::npos) {
      ++f.sanitizerReports;
      trouble += " sanitizer report";
    }
    const std::string out = readFile(dir / "out.dxf");
    if (WIFEXITED(run.status) && WEXITSTATUS(run.status) == 0) {
      const long after = notFinite(out);
      if (after < 0) {
        ++f.unreopenable;
        trouble += " output does not open again";
      } else if (after > std::max(0L, notFinite(input))) {
        ++f.moreNotFinite;
        trouble += " output holds numbers that are not finite";
      }
    } else {
      ++f.failedRuns;
      if (verbose) std::printf("run %ld failed: %s", n, run.err.substr(0, run.err.find('\n') + 1).c_str());
      if (out != sentinel) {
        ++f.changedAfterFailure;
        trouble += " file changed after a failed run";
      }
    }
    if (!trouble.empty()) {
      fs::create_directories(kept);
      const std::string stem = "run-" + std::to_string(seed) + "-" + std::to_string(n);
      spill(kept / (stem + ".dxf"), input);
      spill(kept / (stem + ".txt"), std::string(script) + "\n# " + trouble + "\n# " + run.err);
      ADD_FAILURE() << "run " << n << ": " << trouble << "; kept as " << (kept / stem).string() << "\n" << run.err;
    }
  }
  fs::remove_all(dir);
  std::printf("mutation runs: %ld (seed %ld), failed runs (refused drawings, taken-back commands): %ld\n"
              "crashes %ld, hangs %ld, sanitizer reports %ld, unreopenable outputs %ld, outputs with more "
              "numbers that are not finite %ld, files changed after a failure %ld\n",
              f.runs, seed, f.failedRuns, f.crashes, f.hangs, f.sanitizerReports, f.unreopenable, f.moreNotFinite,
              f.changedAfterFailure);
  EXPECT_TRUE(f.clean());
}

}  // namespace
