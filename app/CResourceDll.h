// Scopes in which the dialog framework looks for dialogs, strings, menus and the toolbar in the chosen
// language library first. Lookups fall back to the module's own German resources for anything the library
// lacks, so a library may translate item by item. Scopes nest: each restores exactly what was current when
// it was made.
#pragma once

#include "sdk/ui/Resources.h"

class CTemporaryResourceOverride {
 public:
  // Makes `resources` current unless it is null (then nothing changes).
  explicit CTemporaryResourceOverride(ui::ResourceHandle resources);
  // The loaded language library; nothing changes when none is loaded.
  CTemporaryResourceOverride();
  virtual ~CTemporaryResourceOverride();
  CTemporaryResourceOverride(const CTemporaryResourceOverride&) = delete;
  CTemporaryResourceOverride& operator=(const CTemporaryResourceOverride&) = delete;

 private:
  ui::ResourceHandle previous_;
};

// Put around every piece of code that loads a dialog, a string, a menu, a bitmap or the toolbar.
class CResourceDll : public CTemporaryResourceOverride {
 public:
  CResourceDll() = default;
};
