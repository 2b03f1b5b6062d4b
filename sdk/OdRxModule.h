// The module object through which the host loads a module file, and the four functions a module file
// exports. Loading order: odrxCreateModuleObject, initApp (the module answers with onLoadArxApp), then
// acrxEntryPoint with the initialise-application and load-drawing messages; unloading: unload drawing,
// uninitApp (onUnloadArxApp), unload application, deleteModule.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRx.h"

#include <string>

// The host's string type.
using OdString = std::wstring;

class ACRX_PORT OdRxModule {
 public:
  virtual ~OdRxModule() = default;
  virtual void addRef() = 0;
  virtual void release() = 0;
  virtual int numRefs() const = 0;
  virtual HINSTANCE getModuleInstance() const = 0;
  // Ends the module object; the host calls it once, after uninitApp.
  virtual void deleteModule() = 0;
  virtual void initApp() = 0;
  virtual void uninitApp() = 0;
  // The full path of the module file.
  virtual OdString moduleName() const = 0;
};

// The host's wrapper for module objects of a dynamically loaded module file.
template <class TModule>
class OdRxWin32Module : public TModule {
 public:
  using TModule::TModule;
};

// A module's initApp answers with these, giving its own file path; the host then drives acrxEntryPoint.
ACRX_PORT bool onLoadArxApp(const ACHAR* moduleName);
ACRX_PORT bool onUnloadArxApp(const ACHAR* moduleName);

// The module file's exports. The first two have plain C names; the other two keep their C++ names.
extern "C" ACRX_PORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);
extern "C" ACRX_PORT void acrxGetApiVersion(int& major, int& minor, int& build, int& revision);
ACRX_PORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& revision);
// Answers the process-wide module object: the first call makes it with the given instance and sets the
// caller's variable to null; later calls answer the same object and leave the variable alone.
ACRX_PORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance);

// The interface version this host implements; a module must report the same major and minor numbers.
constexpr int kOdrxApiMajor = 2;
constexpr int kOdrxApiMinor = 6;
