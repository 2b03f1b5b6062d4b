// A module that follows the host's loading protocol and writes down what the host does with it.
#include "sdk/AcApDocManager.h"
#include "sdk/AcDebug.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"
#include "sdk/OdRxModule.h"

#include <dlfcn.h>

#include <string>

#define TESTMODULE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

std::string gEvents;
bool gUnlock = true;
bool gRemoveCommands = true;

void record(const std::string& event) {
  if (!gEvents.empty()) gEvents += ' ';
  gEvents += event;
}

const ACHAR* kGroup = L"TestGroup";

AcEdCommandStack* commandStack() { return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

void helloCommand() {
  acutPrintf(L"Hallo %s %d %hs\n", L"Welt", 42, "narrow");
  OutputDebugStringA("hello traced\n");
}

// Like a capture loop: points until anything else answers, then what ended it.
void pickCommand() {
  ads_point p;
  int status;
  for (;;) {
    acedInitGet(0, L"Abbrechen _ cancel");
    status = acedGetPoint(nullptr, L"\nPunkt [Abbrechen]", p);
    if (status != RTNORM) break;
    acutPrintf(L"point %g %g %g\n", p[0], p[1], p[2]);
  }
  if (status == RTKWORD) {
    ACHAR keyword[kAcedInputBufferSize];
    acedGetInput(keyword);
    acutPrintf(L"keyword %s\n", keyword);
  }
  acutPrintf(L"result %d\n", status);
}

// What a toolbar button does: queue a command for the command line.
void sendCommand() { acDocManager->sendStringToExecute(acDocManager->curDocument(), L"_TestHello\n"); }

class TestModule : public OdRxModule {
 public:
  explicit TestModule(HINSTANCE instance) : instance_(instance) {}
  void addRef() override { record("addRef"), ++refs_; }
  void release() override { record("release"), --refs_; }
  int numRefs() const override { return refs_; }
  HINSTANCE getModuleInstance() const override { return instance_; }
  void deleteModule() override;
  void initApp() override { record("initApp"), onLoadArxApp(moduleName().c_str()); }
  void uninitApp() override { record("uninitApp"), onUnloadArxApp(moduleName().c_str()); }
  OdString moduleName() const override {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&helloCommand), &info);
    std::string path = info.dli_fname ? info.dli_fname : "";
    return OdString(path.begin(), path.end());
  }

 private:
  HINSTANCE instance_;
  int refs_ = 0;
};

TestModule* gModule = nullptr;

void TestModule::deleteModule() {
  record("deleteModule");
  gModule = nullptr;
  delete this;
}

}  // namespace

OdRxModule* odrxCreateModuleObject(HINSTANCE& instance) {
  if (!gModule) {
    record(instance ? "create" : "create-without-instance");
    gModule = new TestModule(instance);
    instance = nullptr;
  }
  return gModule;
}

void odrxGetAPIVersion(int& major, int& minor, int& build, int& revision) {
  major = 2, minor = TESTMODULE_API_MINOR, build = 0, revision = 1;
}

void acrxGetApiVersion(int& major, int& minor, int& build, int& revision) {
  odrxGetAPIVersion(major, minor, build, revision);
}

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
  record("msg" + std::to_string(static_cast<int>(message)));
  switch (message) {
    case AcRx::kInitAppMsg: {
      auto* linker = AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
      if (linker && gUnlock) linker->unlockApplication(packet);
      if (linker) linker->registerAppMDIAware(packet);
      commandStack()->addCommand(kGroup, L"_TestHello", L"Hallo", ACRX_CMD_TRANSPARENT, helloCommand);
      commandStack()->addCommand(kGroup, L"_TestPick", L"Picken", ACRX_CMD_TRANSPARENT, pickCommand);
      commandStack()->addCommand(kGroup, L"_TestSend", L"Senden", ACRX_CMD_TRANSPARENT, sendCommand);
      break;
    }
    case AcRx::kUnloadAppMsg:
      if (gRemoveCommands)
        for (const ACHAR* name : {L"_TestHello", L"_TestPick", L"_TestSend"}) commandStack()->removeCmd(kGroup, name);
      break;
    case AcRx::kLoadDwgMsg: acedDefun(L"testfun", 0); break;
    case AcRx::kUnloadDwgMsg: acedUndef(L"testfun", 0); break;
    case AcRx::kInvkSubrMsg: acutPrintf(L"testfun called with code %d\n", acedGetFunCode()); break;
    default: break;
  }
  return AcRx::kRetOK;
}

// For the tests: what happened so far, and misbehaviour on request.
TESTMODULE_EXPORT const char* testmoduleEvents() { return gEvents.c_str(); }
TESTMODULE_EXPORT void testmoduleClearEvents() { gEvents.clear(); }
TESTMODULE_EXPORT void testmoduleStayLocked(bool locked) { gUnlock = !locked; }
TESTMODULE_EXPORT void testmoduleLeaveCommands(bool leave) { gRemoveCommands = !leave; }
