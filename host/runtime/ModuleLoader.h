// Loads module files the way the host's home platform does: the module object first
// (odrxCreateModuleObject, initApp, which the module answers with onLoadArxApp), then the application
// messages through acrxEntryPoint; unloading runs the same steps backwards before the file is unmapped.
#pragma once

#include "sdk/AcRx.h"

#include <string>
#include <vector>

class OdRxModule;

namespace host::runtime {

using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

// One loaded module file. Its address is the application id the module sees as the packet of the
// initialise-application message.
struct LoadedModule {
  std::wstring path;  // absolute
  void* library = nullptr;
  OdRxModule* module = nullptr;
  EntryPoint entryPoint = nullptr;
  bool announced = false;  // onLoadArxApp came during initApp
  bool locked = true;      // until the application unlocks itself
  bool mdiAware = false;
};

// Each answers false with a message for the user in `error`.
bool loadModule(const std::wstring& path, std::string& error);
// A locked application stays unless `force` (the host shutting down).
bool unloadModule(const std::wstring& path, bool force, std::string& error);
// Unloads every module, the last loaded first.
void unloadAllModules();

LoadedModule* findModule(const void* appId);
LoadedModule* findModule(const std::wstring& path);
std::vector<LoadedModule*> loadedModules();

// Sends an application message to one module (or, with null, to every module in load order), with the
// module as the owner of whatever it registers meanwhile.
AcRx::AppRetCode sendAppMessage(LoadedModule* module, AcRx::AppMsgCode message, void* packet);
void broadcastAppMessage(AcRx::AppMsgCode message, void* packet);

// The application on whose behalf the host is running code right now (null: the host itself).
const void* currentApplication();

class ApplicationScope {
 public:
  explicit ApplicationScope(const void* app);
  ~ApplicationScope();
  ApplicationScope(const ApplicationScope&) = delete;
  ApplicationScope& operator=(const ApplicationScope&) = delete;

 private:
  const void* previous_;
};

// The decorated names of the two C++ exports, as this platform's compiler writes them.
inline constexpr const char* kOdrxGetApiVersionSymbol = "_Z17odrxGetAPIVersionRiS_S_S_";
inline constexpr const char* kOdrxCreateModuleObjectSymbol = "_Z22odrxCreateModuleObjectRPv";

}  // namespace host::runtime
