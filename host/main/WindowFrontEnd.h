// cadhost's side of the window library: it is opened only when a run wants a window, so that a batch run from
// a script never loads the toolkit.
#pragma once

#include "host/gui/WindowLibrary.h"

#include <string>

namespace cadhost {

// True when a display is there to open the window on. Looks only at the environment: whether the display
// really opens shows when the window starts.
bool displayAvailable();

// Opens the window library beside the executable (once); null with a message for the user in `error` when it
// is missing, cannot be loaded or comes from another build.
const host::gui::WindowFunctions* openWindowLibrary(std::string& error);

// The opened library's functions; null while no window was asked for.
const host::gui::WindowFunctions* windowLibrary();

}  // namespace cadhost
