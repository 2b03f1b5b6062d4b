// The window front end is a shared library of its own (cadhost_window.so, beside cadhost), which cadhost opens
// only when a run wants a window: a batch run from a script then never maps the toolkit and the ~80 libraries
// it pulls in, nor pays for relocating them. The library hands its functions back through one C entry point,
// so that cadhost needs neither the toolkit's headers nor its libraries. This header must stay free of both.
#pragma once

#include <istream>
#include <string>

namespace host::gui {

// Counts up whenever the table changes: cadhost refuses a library of another build instead of calling into it.
inline constexpr int kWindowFunctionsVersion = 1;

struct WindowFunctions {
  int version;
  // Starts the toolkit and shows the main window; false with `error` when the display cannot be opened.
  bool (*startWindow)(std::string& error);
  // Runs the command line in the window until the user closes it, or until `script` (may be null) ends.
  bool (*runWindow)(std::istream* script, const std::string& scriptName, std::string& error);
  void (*stopWindow)();
  // The working drawing was opened with repairs: closing the window asks to save it.
  void (*drawingRepairedOnOpening)();
};

inline constexpr const char* kWindowLibraryFile = "cadhost_window.so";
inline constexpr const char* kWindowFunctionsSymbol = "cadhostWindowFunctions";

}  // namespace host::gui

extern "C" const host::gui::WindowFunctions* cadhostWindowFunctions();
