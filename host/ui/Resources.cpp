#include "sdk/ui/Resources.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <vector>

#include "host/WideText.h"

namespace ui {
namespace {

std::mutex resourceMutex;
std::vector<ResourceHandle> registered;
ResourceHandle current = nullptr;

// The current module first, then the registered ones in order, so a language library may leave items out.
template <typename Lookup>
auto findInResources(Lookup lookup) -> decltype(lookup(*current)) {
  std::lock_guard lock(resourceMutex);
  if (current != nullptr)
    if (auto found = lookup(*current)) return found;
  for (ResourceHandle module : registered)
    if (auto found = lookup(*module)) return found;
  return nullptr;
}

template <typename Map>
auto findIn(const Map& map, int id) -> const typename Map::mapped_type* {
  auto it = map.find(id);
  return it != map.end() ? &it->second : nullptr;
}

}  // namespace

void registerResourceModule(ResourceHandle module) {
  if (module == nullptr) return;
  std::lock_guard lock(resourceMutex);
  if (std::find(registered.begin(), registered.end(), module) == registered.end()) registered.push_back(module);
  if (current == nullptr) current = module;
}

void unregisterResourceModule(ResourceHandle module) {
  std::lock_guard lock(resourceMutex);
  registered.erase(std::remove(registered.begin(), registered.end(), module), registered.end());
  if (current == module) current = registered.empty() ? nullptr : registered.front();
}

const DialogTemplate* findDialogTemplate(int id) {
  return findInResources([id](const ResourceModule& m) { return findIn(m.dialogs, id); });
}

const MenuTemplate* findMenuTemplate(int id) {
  return findInResources([id](const ResourceModule& m) { return findIn(m.menus, id); });
}

const ToolbarTemplate* findToolbarTemplate(int id) {
  return findInResources([id](const ResourceModule& m) { return findIn(m.toolbars, id); });
}

const std::wstring* findString(int id) {
  return findInResources([id](const ResourceModule& m) { return findIn(m.strings, id); });
}

const CursorShape* findCursor(int id) {
  return findInResources([id](const ResourceModule& m) { return findIn(m.cursors, id); });
}

ResourceHandle loadResourceLibrary(const std::wstring& path, std::wstring& error) {
  const std::string file = host::toUtf8(path);
  if (::access(file.c_str(), R_OK) != 0) {
    error = host::fromUtf8(std::strerror(errno));
    return nullptr;
  }
  // Kept loaded for the life of the process: its resources are referenced from then on.
  void* library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* reason = ::dlerror();
    error = host::fromUtf8(reason != nullptr ? reason : "cannot load the library");
    return nullptr;
  }
  using Entry = const ResourceModule* (*)();
  auto entry = reinterpret_cast<Entry>(::dlsym(library, "UiResourceModule"));
  if (entry == nullptr || entry() == nullptr) {
    ::dlclose(library);
    error = L"the library holds no resources (no UiResourceModule)";
    return nullptr;
  }
  error.clear();
  return entry();
}

}  // namespace ui

ui::ResourceHandle AfxGetResourceHandle() {
  std::lock_guard lock(ui::resourceMutex);
  return ui::current;
}

void AfxSetResourceHandle(ui::ResourceHandle handle) {
  std::lock_guard lock(ui::resourceMutex);
  ui::current = handle;
}

bool AfxLoadString(int id, std::wstring& out) {
  const std::wstring* text = ui::findString(id);
  out = text != nullptr ? *text : std::wstring();
  return text != nullptr;
}

HCURSOR AfxLoadCursor(int id) { return ui::findCursor(id); }
