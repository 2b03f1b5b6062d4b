#include "host/main/WindowFrontEnd.h"

#include "host/main/BesideExecutable.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace cadhost {
namespace {

const host::gui::WindowFunctions* gFunctions = nullptr;

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

std::string cannotOpen(const std::string& file, const std::string& why) {
  return "the window library " + file + " cannot be opened: " + why + "; run with --headless";
}

// dlerror() starts with the file name, which the message names already.
std::string loaderReason(const std::string& file) {
  const char* raw = dlerror();
  std::string why = raw != nullptr ? raw : "unknown error";
  if (why.starts_with(file + ": ")) why.erase(0, file.size() + 2);
  return why;
}

}  // namespace

bool displayAvailable() { return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY"); }

const host::gui::WindowFunctions* openWindowLibrary(std::string& error) {
  if (gFunctions != nullptr) return gFunctions;
  const std::filesystem::path path = besideExecutable(host::gui::kWindowLibraryFile);
  if (path.empty()) {
    error = cannotOpen(host::gui::kWindowLibraryFile, "the folder of cadhost is unknown");
    return nullptr;
  }
  const std::string file = path.string();
  // Never closed: the toolkit leaves handlers behind that run when the process ends.
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    error = cannotOpen(file, loaderReason(file));
    return nullptr;
  }
  using Entry = const host::gui::WindowFunctions* (*)();
  auto entry = reinterpret_cast<Entry>(dlsym(library, host::gui::kWindowFunctionsSymbol));
  const host::gui::WindowFunctions* functions = entry != nullptr ? entry() : nullptr;
  if (functions == nullptr) {
    error = cannotOpen(file, std::string("it is not cadhost's window library (no ") +
                                 host::gui::kWindowFunctionsSymbol + ")");
    return nullptr;
  }
  if (functions->version != host::gui::kWindowFunctionsVersion) {
    error = cannotOpen(file, "it belongs to another build of cadhost");
    return nullptr;
  }
  gFunctions = functions;
  return gFunctions;
}

const host::gui::WindowFunctions* windowLibrary() { return gFunctions; }

}  // namespace cadhost
