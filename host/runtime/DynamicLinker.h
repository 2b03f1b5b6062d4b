// The dynamic linker of the system registry: module loading and the per-application flags.
#pragma once

#include "sdk/AcRxRegistry.h"

namespace host::runtime {

class DynamicLinker : public AcRxDynamicLinker {
 public:
  bool loadModule(const ACHAR* fileName, bool printIt) override;
  bool unloadModule(const ACHAR* fileName, bool printIt) override;
  bool lockApplication(void* appId) const override;
  bool unlockApplication(void* appId) const override;
  bool isApplicationLocked(const ACHAR* fileName) const override;
  bool registerAppMDIAware(void* appId) const override;
  bool registerAppNotMDIAware(void* appId) const override;
};

DynamicLinker& dynamicLinker();

}  // namespace host::runtime
