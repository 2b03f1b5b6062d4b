// The application object of a database-level extension: one handler per host application message, chosen
// by a dispatch table indexed by the message code.
#pragma once

#include "sdk/AcRx.h"

class AcRxDbxApp {
 public:
  AcRxDbxApp();
  virtual ~AcRxDbxApp();
  AcRxDbxApp(const AcRxDbxApp&) = delete;
  AcRxDbxApp& operator=(const AcRxDbxApp&) = delete;

  // Calls the handler of the message (codes 0 to 15) with the packet as it came; any other code answers
  // 0 without calling anything.
  AcRx::AppRetCode Dispatch(AcRx::AppMsgCode message, void* packet);

  // In the order of the host's message names.
  virtual AcRx::AppRetCode On_kCfgMsg(void* packet);
  virtual AcRx::AppRetCode On_kDependencyMsg(void* packet);
  virtual AcRx::AppRetCode On_kEndDialogMsg(void* packet);
  virtual AcRx::AppRetCode On_kEndMsg(void* packet);
  virtual AcRx::AppRetCode On_kInitAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kInitDialogMsg(void* packet);
  virtual AcRx::AppRetCode On_kInvkSubrMsg(void* packet);
  virtual AcRx::AppRetCode On_kLoadDwgMsg(void* packet);
  virtual AcRx::AppRetCode On_kNoDependencyMsg(void* packet);
  virtual AcRx::AppRetCode On_kNullMsg(void* packet);
  virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kPreQuitMsg(void* packet);
  virtual AcRx::AppRetCode On_kQuitMsg(void* packet);
  virtual AcRx::AppRetCode On_kSaveMsg(void* packet);
  virtual AcRx::AppRetCode On_kUnloadAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kUnloadDwgMsg(void* packet);
  virtual void RegisterServerComponents();

  void SetResourceInstance(HINSTANCE instance) { m_hResourceInstance = instance; }
  HINSTANCE ResourceInstance() const { return m_hResourceInstance; }

 protected:
  // Let the host unload the module on request, and tell it the module copes with several drawings.
  bool m_bUnlockApp = true;
  bool m_bMDIAware = true;
  HINSTANCE m_hResourceInstance = nullptr;
};

// The process-wide application object of the module.
AcRxDbxApp& ViraApplication();
