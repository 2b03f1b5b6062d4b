// cadhost: the reference CAD host. Opens a drawing, loads the module, and runs the command line: in its
// window when there is a display and no script (or with --window), otherwise from a script or standard input.
// The window lives in a library of its own that is opened only then (host/main/WindowFrontEnd).
//
//   cadhost [DRAWING.dxf] [--script FILE|-] [--save OUT.dxf] [--module PATH] [--trace] [--headless|--window]
//                [--recover]
//
// --recover opens a damaged drawing as far as it can be repaired and lists the repairs; the damaged file
// is written only when the script or --save saves the drawing there.
//
// A failing run exits with status 1 (2 for a wrong command line) and never writes the drawing.
#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/db/Drawing.h"
#include "host/db/Undo.h"
#include "host/editor/Prompt.h"
#include "host/headless/ScriptRunner.h"
#include "host/main/BesideExecutable.h"
#include "host/main/WindowFrontEnd.h"
#include "host/runtime/ModuleLoader.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    "usage: cadhost [DRAWING.dxf] [--script FILE|-] [--save OUT.dxf] [--module PATH] [--trace] "
    "[--headless|--window] [--recover]\n";
constexpr const char* kDefaultModule = "ViraCadtoolsV10.so";

struct Options {
  std::string drawing;
  std::optional<std::string> script;
  std::optional<std::string> save;
  std::optional<std::string> module;
  bool trace = false;
  bool headless = false;
  bool recover = false;
  bool window = false;
};

bool parseArguments(int argc, char** argv, Options& options, std::string& error) {
  std::vector<std::string> args(argv + 1, argv + argc);
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&](std::optional<std::string>& into) {
      if (i + 1 >= args.size()) {
        error = a + " needs a value";
        return false;
      }
      into = args[++i];
      return true;
    };
    if (a == "--script") {
      if (!value(options.script)) return false;
    } else if (a == "--save") {
      if (!value(options.save)) return false;
      // An empty name would mean the opened drawing itself: overwriting it must be asked for by name.
      if (options.save->empty()) {
        error = "--save needs a file name";
        return false;
      }
    } else if (a == "--module") {
      if (!value(options.module)) return false;
    } else if (a == "--trace") {
      options.trace = true;
    } else if (a == "--headless") {
      options.headless = true;
    } else if (a == "--recover") {
      options.recover = true;
    } else if (a == "--window") {
      options.window = true;
    } else if (a.starts_with("--") || (a.starts_with("-") && a != "-")) {
      error = "unknown option " + a;
      return false;
    } else if (options.drawing.empty()) {
      options.drawing = a;
    } else {
      error = "only one drawing can be opened: " + a;
      return false;
    }
  }
  if (options.headless && options.window) {
    error = "--headless and --window exclude each other";
    return false;
  }
  return true;
}

// Without --module the host looks for the module beside its own executable.
std::string defaultModule() {
  const std::filesystem::path candidate = cadhost::besideExecutable(kDefaultModule);
  std::error_code ec;
  return !candidate.empty() && std::filesystem::exists(candidate, ec) ? candidate.string() : std::string();
}

// Opens the drawing, recovering it when asked; a damaged drawing that recovery would open gets a hint.
bool openDrawing(const Options& options, std::string& error) {
  const std::string& path = options.drawing;
  if (!options.recover) {
    if (host::openDrawing(path, error)) return true;
    if (error.empty()) error = "cannot open " + path;
    if (host::drawingIsRecoverable(path))
      error += "\ncadhost: the drawing is damaged; cadhost --recover opens it and lists what it repairs";
    return false;
  }
  std::vector<std::string> repairs;
  if (!host::recoverDrawing(path, repairs, error)) {
    if (error.empty()) error = "cannot recover " + path;
    return false;
  }
  std::string report = "Recovered " + path + (repairs.empty() ? ": nothing needed repair\n" : ":\n");
  for (const std::string& line : repairs) report += "  " + line + "\n";
  host::transcriptWrite(report);
  if (!repairs.empty() && cadhost::windowLibrary() != nullptr) cadhost::windowLibrary()->drawingRepairedOnOpening();
  return true;
}

void stopWindow() {
  if (cadhost::windowLibrary() != nullptr) cadhost::windowLibrary()->stopWindow();
}

int fail(const std::string& message) {
  std::cerr << "cadhost: " << message << "\n";
  host::runtime::unloadAllModules();
  stopWindow();
  return 1;
}

// Starts the window when this run wants one; false with `error` when it cannot.
bool startWindow(const Options& options, bool& windowed, std::string& error) {
  windowed = options.window || (!options.headless && !options.script);
#ifdef VIRA_HAVE_WINDOW
  if (!windowed) return true;
  if (!cadhost::displayAvailable()) {
    error = "the window needs a display (DISPLAY is not set); run with --headless to work from a script or the "
            "terminal";
    return false;
  }
  const host::gui::WindowFunctions* window = cadhost::openWindowLibrary(error);
  return window != nullptr && window->startWindow(error);
#else
  if (options.window) {
    error = "this cadhost was built without its window (wxWidgets was missing); run with --headless";
    return false;
  }
  if (windowed) host::trace("no window front end in this build: running headless");
  windowed = false;
  return true;
#endif
}

}  // namespace

int runCadhost(int argc, char** argv) {
  Options options;
  std::string error;
  if (!parseArguments(argc, argv, options, error)) {
    std::cerr << "cadhost: " << error << "\n" << kUsage;
    return 2;
  }
  host::setTraceEnabled(options.trace);
  bool windowed = false;
  if (!startWindow(options, windowed, error)) return fail(error);

  if (!options.drawing.empty() && !openDrawing(options, error)) return fail(error);

  std::string module = options.module ? *options.module : defaultModule();
  if (module.empty())
    host::trace("no module beside the executable: running without one");
  else if (!host::runtime::loadModule(host::fromUtf8(module), error))
    return fail(error);

  std::ifstream file;
  std::string scriptName = "stdin";
  if (options.script && *options.script != "-") {
    scriptName = *options.script;
    file.open(scriptName);
    if (!file) return fail("cannot read script " + scriptName);
  }
  std::istream& script = file.is_open() ? static_cast<std::istream&>(file) : std::cin;
  if (windowed) {
    if (!cadhost::windowLibrary()->runWindow(options.script ? &script : nullptr, scriptName, error))
      return fail(error);
  } else {
    host::editor::setImmediatePrompts(!file.is_open() && !options.script && isatty(STDIN_FILENO));
    host::headless::ScriptRunner runner(script, scriptName);
    if (!runner.run(error)) return fail(error);
  }
  host::transcriptEndLine();

  // The drawing is as it was before the failed command; the run failed all the same.
  if (host::anyCommandTakenBack())
    return fail("a command failed and its changes were taken back; the drawing was not saved");

  if (options.save && !host::saveDrawing(*options.save, error))
    return fail(error.empty() ? "cannot save " + *options.save : error);
  host::runtime::unloadAllModules();
  stopWindow();
  return 0;
}

int main(int argc, char** argv) {
  // A reader that went away (cadhost ... | head) must not end the run before the drawing is saved:
  // writes to it fail with EPIPE instead, and the transcript is lost, not the work.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return runCadhost(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("cadhost: out of memory; no drawing was written\n", stderr);
    return 1;
  }
}
