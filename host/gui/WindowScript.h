// A script acting as the user of the window: its lines reach the window as the toolkit's events (typed into the
// command line, clicked on the buttons of a dialog, a pick clicked into the drawing view), so that the script
// tests what a person would do. Beside the headless lines:
//
//   @pick X,Y[,Z]     clicks the drawing view where the world point lies (brought into view first); object snap
//                     applies as for a mouse click
//   @screenshot PATH  saves the main window with the dialogs over it as a PNG picture
//   @key KEYS         types into the focused window: words are typed as they stand, key names (Return, Escape,
//                     Tab, Delete, Backspace, Space, Up, Down, Left, Right, F1-F12) press that key
#pragma once

#include "host/editor/Input.h"

namespace host::gui {

// The next answer for the waiting prompt, from the running script.
editor::Input scriptedInput();
// One script line while a modal dialog is open; false when the script has ended.
bool scriptedModalStep();

}  // namespace host::gui
