// The application object of an editor-level extension: registers the command table with the host's
// command stack and defines the LISP function table with every drawing.
#pragma once

#include "app/AcRxDbxApp.h"

class AcRxArxApp : public AcRxDbxApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
  AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
  AcRx::AppRetCode On_kLoadDwgMsg(void* packet) override;
  AcRx::AppRetCode On_kUnloadDwgMsg(void* packet) override;
  AcRx::AppRetCode On_kInvkSubrMsg(void* packet) override;
};
