// The four functions the host looks up in the module file; everything else stays hidden.
#include "app/AcRxDbxApp.h"
#include "app/CDrxModule.h"
#include "sdk/OdRxModule.h"

#define VIRA_EXPORT __attribute__((visibility("default")))

namespace {

// The host interface this module is built for.
constexpr int kApiMajor = 2;
constexpr int kApiMinor = 6;
constexpr int kApiBuild = 0;
constexpr int kApiRevision = 1;

}  // namespace

extern "C" VIRA_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
  return ViraApplication().Dispatch(message, packet);
}

extern "C" VIRA_EXPORT void acrxGetApiVersion(int& major, int& minor, int& build, int& revision) {
  major = kApiMajor;
  minor = kApiMinor;
  build = kApiBuild;
  revision = kApiRevision;
}

VIRA_EXPORT void odrxGetAPIVersion(int& major, int& minor, int& build, int& revision) {
  major = kApiMajor;
  minor = kApiMinor;
  build = kApiBuild;
  revision = kApiRevision;
}

VIRA_EXPORT OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) { return ViraCreateModuleObject(instance); }
