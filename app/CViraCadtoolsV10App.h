// The VIRA cadtools application: the commands, then the update check and the toolbar.
#pragma once

#include "app/AcRxArxApp.h"

class CViraCadtoolsV10App : public AcRxArxApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
  AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
};

// Hooks of the start-up and shut-down order. The update check (app/ViraUpdateCheck.cpp) starts its thread
// and never waits for it.
void ViraStartUpdateCheck();
// The toolbar (app/MfcToolbar.cpp): created at initialisation, destroyed at unload.
void ViraCreateToolbar();
void ViraDestroyToolbar();
