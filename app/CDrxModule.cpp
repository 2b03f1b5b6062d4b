#include "app/CDrxModule.h"

#include "app/AcRxDbxApp.h"
#include "support/KoConvert.h"

#include <dlfcn.h>
#include <link.h>

#include <string>

namespace {

CDrxModule* gModule = nullptr;

// A module file name fits the classic path buffer of 260 characters; a longer one is cut.
constexpr std::size_t kMaxPath = 260;

void anchor() {}

}  // namespace

CDrxModule* ViraModuleObject() { return gModule; }

OdString ViraModulePath() { return gModule != nullptr ? gModule->moduleName() : CDrxModule(nullptr).moduleName(); }

CDrxModule* ViraCreateModuleObject(HINSTANCE& instance) {
  if (gModule == nullptr) {
    gModule = new OdRxWin32Module<CDrxModule>(instance);
    // The module's own resources are reached through its instance, as the process-attach hook would set it.
    ViraApplication().SetResourceInstance(instance);
    instance = nullptr;
  }
  return gModule;
}

void CDrxModule::deleteModule() {
  gModule = nullptr;
  delete this;
}

void CDrxModule::initApp() { onLoadArxApp(moduleName().c_str()); }

void CDrxModule::uninitApp() { onUnloadArxApp(moduleName().c_str()); }

OdString CDrxModule::moduleName() const {
  std::string path;
  link_map* map = nullptr;
  if (m_hInstance != nullptr && dlinfo(m_hInstance, RTLD_DI_LINKMAP, &map) == 0 && map != nullptr &&
      map->l_name != nullptr && map->l_name[0] != '\0') {
    path = map->l_name;
  } else {
    // Without the loader's handle: the file that holds this code.
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&anchor), &info) != 0 && info.dli_fname != nullptr) path = info.dli_fname;
  }
  OdString name = KoUtf8ToWide(path);
  if (name.size() > kMaxPath - 1) name.resize(kMaxPath - 1);
  return name;
}
