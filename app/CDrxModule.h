// The module object through which the host loads and unloads the module file.
#pragma once

#include "sdk/OdRxModule.h"

#include <cstdint>

class CDrxModule : public OdRxModule {
 public:
  explicit CDrxModule(HINSTANCE instance) : m_hInstance(instance) {}

  void addRef() override { ++m_nRefs; }
  // Nothing is freed here: the host ends the object with deleteModule.
  void release() override { --m_nRefs; }
  int numRefs() const override { return m_nRefs; }
  HINSTANCE getModuleInstance() const override { return m_hInstance; }
  void deleteModule() override;
  void initApp() override;
  void uninitApp() override;
  OdString moduleName() const override;

 private:
  std::int32_t m_nRefs = 0;
  HINSTANCE m_hInstance;
};

// The process-wide module object: made by the first odrxCreateModuleObject, cleared by deleteModule.
CDrxModule* ViraModuleObject();
CDrxModule* ViraCreateModuleObject(HINSTANCE& instance);
// The full path of the module file (the module object's name, or the file that holds this code when there
// is no module object yet).
OdString ViraModulePath();
