// Makes the module's resources the first place the dialog framework looks, for as long as the object
// lives: every piece of code that loads a dialog, a string or the toolbar does it inside one.
#pragma once

#include "sdk/ui/Resources.h"

// The resources of the chosen language. Until language libraries are chosen, the module's own German ones.
ui::ResourceHandle ViraLanguageResources();

class ViraResourceScope {
 public:
  ViraResourceScope() : previous_(AfxGetResourceHandle()) { AfxSetResourceHandle(ViraLanguageResources()); }
  virtual ~ViraResourceScope() { AfxSetResourceHandle(previous_); }
  ViraResourceScope(const ViraResourceScope&) = delete;
  ViraResourceScope& operator=(const ViraResourceScope&) = delete;

 private:
  ui::ResourceHandle previous_;
};
