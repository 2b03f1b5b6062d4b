#include "app/ViraLogging.h"

#include <mutex>

#include "cad/AcDbDebugLog.h"
#include "sdk/AcDebug.h"
#include "support/KoLog.h"
#include "support/KoSettings.h"

namespace {

std::mutex gMasterMutex;
KoMasterLogger* gMaster = nullptr;

}  // namespace

void ViraStartLogging() {
  std::lock_guard lock(gMasterMutex);
  if (gMaster != nullptr) return;
  KoSetDebugOutput(&OutputDebugStringA);
  KoCreateDirectories(KoStateDirectory());
  gMaster = new KoMasterLogger();
  SetMasterLogger(gMaster);
  InstallTomaDebugLogger();
}

void ViraStopLogging() {
  std::lock_guard lock(gMasterMutex);
  if (gMaster == nullptr) return;
  UninstallTomaDebugLogger();
  SetMasterLogger(nullptr);
  delete gMaster;
  gMaster = nullptr;
}
