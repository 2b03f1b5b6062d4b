#include "app/AcRxDbxApp.h"

#include "app/ArxEntries.h"
#include "sdk/AcRxObject.h"
#include "sdk/AcRxRegistry.h"

namespace {

using Handler = AcRx::AppRetCode (AcRxDbxApp::*)(void*);

// Indexed by the message code.
constexpr Handler kDispatch[] = {
    &AcRxDbxApp::On_kNullMsg,          // 0
    &AcRxDbxApp::On_kInitAppMsg,       // 1
    &AcRxDbxApp::On_kUnloadAppMsg,     // 2
    &AcRxDbxApp::On_kLoadDwgMsg,       // 3
    &AcRxDbxApp::On_kUnloadDwgMsg,     // 4
    &AcRxDbxApp::On_kInvkSubrMsg,      // 5
    &AcRxDbxApp::On_kCfgMsg,           // 6
    &AcRxDbxApp::On_kEndMsg,           // 7
    &AcRxDbxApp::On_kQuitMsg,          // 8
    &AcRxDbxApp::On_kSaveMsg,          // 9
    &AcRxDbxApp::On_kDependencyMsg,    // 10
    &AcRxDbxApp::On_kNoDependencyMsg,  // 11
    &AcRxDbxApp::On_kOleUnloadAppMsg,  // 12
    &AcRxDbxApp::On_kPreQuitMsg,       // 13
    &AcRxDbxApp::On_kInitDialogMsg,    // 14
    &AcRxDbxApp::On_kEndDialogMsg,     // 15
};
constexpr int kMessageCount = static_cast<int>(sizeof kDispatch / sizeof kDispatch[0]);

// Looked up afresh for every call: the host may replace its services between messages.
AcRxDynamicLinker* dynamicLinker() { return AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER)); }

}  // namespace

AcRxDbxApp::AcRxDbxApp() = default;
AcRxDbxApp::~AcRxDbxApp() = default;

AcRx::AppRetCode AcRxDbxApp::Dispatch(AcRx::AppMsgCode message, void* packet) {
  const int code = static_cast<int>(message);
  if (code < 0 || code >= kMessageCount) return AcRx::kRetOK;
  return (this->*kDispatch[code])(packet);
}

AcRx::AppRetCode AcRxDbxApp::On_kInitAppMsg(void* packet) {
  if (m_bUnlockApp)
    if (AcRxDynamicLinker* linker = dynamicLinker()) linker->unlockApplication(packet);
  if (m_bMDIAware)
    if (AcRxDynamicLinker* linker = dynamicLinker()) linker->registerAppMDIAware(packet);
  RegisterServerComponents();
  ArxEntryTable<RxClassEntry>& classes = RxClassTable();
  if (!classes.IsEmpty()) {
    for (std::size_t i = 0; i < classes.Count(); ++i)
      if (classes[i].initialise) classes[i].initialise();
    acrxBuildClassHierarchy();
  }
  return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxDbxApp::On_kUnloadAppMsg(void*) {
  ArxEntryTable<RxClassEntry>& classes = RxClassTable();
  for (std::size_t i = 0; i < classes.Count(); ++i)
    if (classes[i].description) deleteAcRxClassBranch(classes[i].description());
  return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxDbxApp::On_kCfgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInitDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kLoadDwgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kNoDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kNullMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kOleUnloadAppMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kPreQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kSaveMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }
void AcRxDbxApp::RegisterServerComponents() {}
