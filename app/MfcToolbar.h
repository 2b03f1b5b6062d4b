// The VIRA cadtools toolbar in the host's main frame: two buttons, each of which cancels whatever runs on
// the command line and starts one of the module's commands as if it had been typed. Created when the module
// is initialised, destroyed when it is unloaded; a failure to create it is shown once and leaves the
// commands usable from the command line.
#pragma once

#include "sdk/ui/CToolBar.h"

class MfcToolbar : public CToolBar {
 public:
  // Makes `owner` (or nobody) the window that receives the button commands.
  void SetOwner(CWnd* owner);
  bool OnCommand(int id, int code) override;
};

// The toolbar while it exists; null before creation, after a failed one and after destruction.
MfcToolbar* ViraToolbar();
