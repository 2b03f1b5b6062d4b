#include "host/runtime/DynamicLinker.h"

#include "host/Transcript.h"
#include "host/runtime/ModuleLoader.h"

namespace host::runtime {
namespace {

// printIt: the outcome goes to the command line, as when the user loads a module by hand.
bool report(bool ok, const std::string& error, bool printIt) {
  if (!ok && printIt) transcriptWrite(error + "\n");
  return ok;
}

bool setFlag(void* appId, bool LoadedModule::*flag, bool value) {
  LoadedModule* m = findModule(static_cast<const void*>(appId));
  if (!m) return false;
  m->*flag = value;
  return true;
}

}  // namespace

bool DynamicLinker::loadModule(const ACHAR* fileName, bool printIt) {
  std::string error;
  bool ok = fileName && runtime::loadModule(fileName, error);
  return report(ok, fileName ? error : "no module file given", printIt);
}

bool DynamicLinker::unloadModule(const ACHAR* fileName, bool printIt) {
  std::string error;
  bool ok = fileName && runtime::unloadModule(fileName, false, error);
  return report(ok, fileName ? error : "no module file given", printIt);
}

bool DynamicLinker::lockApplication(void* appId) const { return setFlag(appId, &LoadedModule::locked, true); }
bool DynamicLinker::unlockApplication(void* appId) const {
  return setFlag(appId, &LoadedModule::locked, false);
}

bool DynamicLinker::isApplicationLocked(const ACHAR* fileName) const {
  LoadedModule* m = fileName ? findModule(std::wstring(fileName)) : nullptr;
  return m && m->locked;
}

bool DynamicLinker::registerAppMDIAware(void* appId) const {
  return setFlag(appId, &LoadedModule::mdiAware, true);
}
bool DynamicLinker::registerAppNotMDIAware(void* appId) const {
  return setFlag(appId, &LoadedModule::mdiAware, false);
}

DynamicLinker& dynamicLinker() {
  static DynamicLinker* linker = new DynamicLinker;
  return *linker;
}

}  // namespace host::runtime
