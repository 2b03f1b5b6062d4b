// The picture a user sees: the main window with the dialogs over it, taken from the screen.
#pragma once

#include <string>

namespace host::gui {

// Saves the main window (grown to take in the dialogs shown over it) as a PNG file.
bool saveScreenshot(const std::string& path, std::string& error);

}  // namespace host::gui
