#include "host/runtime/ModuleLoader.h"

#include "host/Transcript.h"
#include "host/db/Drawing.h"
#include "host/WideText.h"
#include "host/runtime/CommandStack.h"
#include "host/runtime/LispFunctions.h"
#include "host/runtime/SharedObjectCheck.h"
#include "sdk/AcApDocManager.h"
#include "sdk/OdRxModule.h"

#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <memory>

namespace host::runtime {
namespace {

using VersionExport = void (*)(int&, int&, int&, int&);
using CreateExport = OdRxModule* (*)(HINSTANCE&);

std::vector<std::unique_ptr<LoadedModule>>& modules() {
  static auto* list = new std::vector<std::unique_ptr<LoadedModule>>;
  return *list;
}

const void* gCurrentApp = nullptr;

// The module being initialised: onLoadArxApp during its initApp belongs to it.
LoadedModule* gInitialising = nullptr;

void* findExport(void* library, const char* plainName, const char* decoratedName) {
  void* symbol = decoratedName ? dlsym(library, decoratedName) : nullptr;
  if (!symbol) symbol = dlsym(library, plainName);
  return symbol;
}

std::string versionText(int a, int b, int c, int d) {
  return std::to_string(a) + "." + std::to_string(b) + "." + std::to_string(c) + "." + std::to_string(d);
}

// Checks the interface version a module was built for; empty when it fits this host.
std::string checkVersion(void* library, const std::string& name) {
  auto plain = reinterpret_cast<VersionExport>(dlsym(library, "acrxGetApiVersion"));
  auto decorated = reinterpret_cast<VersionExport>(findExport(library, "odrxGetAPIVersion", kOdrxGetApiVersionSymbol));
  if (!plain && !decorated) return name + " does not say which host interface it was built for";
  for (VersionExport version : {plain, decorated}) {
    if (!version) continue;
    int major = -1, minor = -1, build = -1, revision = -1;
    version(major, minor, build, revision);
    trace("  interface version " + versionText(major, minor, build, revision));
    if (major != kOdrxApiMajor || minor != kOdrxApiMinor)
      return name + " was built for host interface " + versionText(major, minor, build, revision) +
             "; this host implements " + std::to_string(kOdrxApiMajor) + "." + std::to_string(kOdrxApiMinor);
  }
  return {};
}

AcApDocument* currentDocument() { return acDocManagerPtr()->curDocument(); }

// The module's object and file go; whatever it left registered goes with them, since its code is gone.
void release(LoadedModule& m) {
  if (m.module) {
    ApplicationScope scope(&m);
    m.module->release();
    m.module->deleteModule();
    m.module = nullptr;
  }
  int leftCommands = commandStack().removeCommandsOf(&m);
  int leftFunctions = lispFunctions().removeOwner(&m);
  if (leftCommands || leftFunctions)
    trace("  removed " + std::to_string(leftCommands) + " commands and " + std::to_string(leftFunctions) +
          " LISP functions the module left behind");
  if (m.library) dlclose(m.library);
  m.library = nullptr;
  std::erase_if(modules(), [&m](const auto& p) { return p.get() == &m; });
}

// The load and unload drawing messages, for the drawing open now (none without a drawing).
void sendDrawingMessage(LoadedModule& m, AcRx::AppMsgCode message) {
  AcApDocument* doc = currentDocument();
  if (doc && host::hasDrawing()) sendAppMessage(&m, message, doc);
}

// The module object, its initialisation and the initialise-application message. On false the caller
// releases what was made.
bool startModule(LoadedModule& m, CreateExport create, const std::string& name, std::string& error) {
  HINSTANCE instance = m.library;
  {
    ApplicationScope scope(&m);
    m.module = create(instance);
  }
  if (!m.module) {
    error = name + " did not create its module object";
    return false;
  }
  m.module->addRef();
  trace("  module object created");

  gInitialising = &m;
  {
    ApplicationScope scope(&m);
    m.module->initApp();
  }
  gInitialising = nullptr;
  if (!m.announced) {
    error = name + " did not announce itself to the host (onLoadArxApp) when initialised";
    return false;
  }
  if (AcRx::AppRetCode rc = sendAppMessage(&m, AcRx::kInitAppMsg, &m); rc != AcRx::kRetOK) {
    ApplicationScope scope(&m);
    m.module->uninitApp();
    error = name + " refused to initialise (answer " + std::to_string(static_cast<int>(rc)) + ")";
    return false;
  }
  return true;
}

}  // namespace

ApplicationScope::ApplicationScope(const void* app) : previous_(gCurrentApp) { gCurrentApp = app; }
ApplicationScope::~ApplicationScope() { gCurrentApp = previous_; }
const void* currentApplication() { return gCurrentApp; }

LoadedModule* findModule(const void* appId) {
  for (const auto& m : modules())
    if (m.get() == appId) return m.get();
  return nullptr;
}

LoadedModule* findModule(const std::wstring& path) {
  std::error_code ec;
  std::wstring absolute = std::filesystem::absolute(path, ec).lexically_normal().wstring();
  for (const auto& m : modules())
    if (m->path == absolute || m->path == path) return m.get();
  return nullptr;
}

std::vector<LoadedModule*> loadedModules() {
  std::vector<LoadedModule*> list;
  for (const auto& m : modules()) list.push_back(m.get());
  return list;
}

AcRx::AppRetCode sendAppMessage(LoadedModule* module, AcRx::AppMsgCode message, void* packet) {
  if (!module) {
    broadcastAppMessage(message, packet);
    return AcRx::kRetOK;
  }
  if (!module->entryPoint) return AcRx::kRetError;
  trace("  message " + std::to_string(static_cast<int>(message)) + " to " + toUtf8(module->path));
  ApplicationScope scope(module);
  return module->entryPoint(message, packet);
}

void broadcastAppMessage(AcRx::AppMsgCode message, void* packet) {
  for (LoadedModule* m : loadedModules()) sendAppMessage(m, message, packet);
}

bool loadModule(const std::wstring& path, std::string& error) {
  std::error_code ec;
  std::filesystem::path file = std::filesystem::absolute(path, ec).lexically_normal();
  std::string name = toUtf8(file.wstring());
  if (ec || !std::filesystem::is_regular_file(file, ec)) {
    error = "cannot load module " + toUtf8(path) + ": no such file";
    return false;
  }
  if (findModule(file.wstring())) {
    error = "module " + name + " is already loaded";
    return false;
  }
  trace("load module " + name);
  if (std::string bad = checkSharedObject(file); !bad.empty()) {
    error = "cannot load module " + name + ": the file " + bad;
    return false;
  }
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* why = dlerror();
    error = "cannot load module " + name + ": " + (why ? why : "unknown reason");
    return false;
  }
  auto entry = reinterpret_cast<EntryPoint>(dlsym(library, "acrxEntryPoint"));
  auto create = reinterpret_cast<CreateExport>(
      findExport(library, "odrxCreateModuleObject", kOdrxCreateModuleObjectSymbol));
  if (!entry || !create) {
    dlclose(library);
    error = name + " is not a module of this host: it does not export " +
            (entry ? "odrxCreateModuleObject" : "acrxEntryPoint");
    return false;
  }
  if (std::string bad = checkVersion(library, name); !bad.empty()) {
    dlclose(library);
    error = bad;
    return false;
  }

  auto owned = std::make_unique<LoadedModule>();
  LoadedModule& m = *owned;
  m.path = file.wstring();
  m.library = library;
  m.entryPoint = entry;
  modules().push_back(std::move(owned));
  try {
    if (!startModule(m, create, name, error)) {
      release(m);
      return false;
    }
  } catch (const std::exception& e) {
    // A module that throws while it starts is not fit to stay.
    gInitialising = nullptr;
    release(m);
    error = name + " failed while it was loaded: " + e.what();
    return false;
  }
  sendDrawingMessage(m, AcRx::kLoadDwgMsg);
  return true;
}

bool unloadModule(const std::wstring& path, bool force, std::string& error) {
  LoadedModule* m = findModule(path);
  if (!m) {
    error = "module " + toUtf8(path) + " is not loaded";
    return false;
  }
  if (m->locked && !force) {
    error = "module " + toUtf8(m->path) + " is locked and cannot be unloaded";
    return false;
  }
  trace("unload module " + toUtf8(m->path));
  sendDrawingMessage(*m, AcRx::kUnloadDwgMsg);
  {
    ApplicationScope scope(m);
    m->module->uninitApp();
  }
  sendAppMessage(m, AcRx::kUnloadAppMsg, m);
  release(*m);
  return true;
}

void unloadAllModules() {
  while (!modules().empty()) {
    std::string ignored;
    unloadModule(modules().back()->path, true, ignored);
  }
}

}  // namespace host::runtime

bool onLoadArxApp(const ACHAR* moduleName) {
  using namespace host::runtime;
  host::trace("  onLoadArxApp " + host::toUtf8(moduleName ? moduleName : L""));
  if (!gInitialising) return false;
  gInitialising->announced = true;
  return true;
}

bool onUnloadArxApp(const ACHAR* moduleName) {
  host::trace("  onUnloadArxApp " + host::toUtf8(moduleName ? moduleName : L""));
  return host::runtime::findModule(host::runtime::currentApplication()) != nullptr;
}
