// cadhost in its window: starting the toolkit, running the command line with the window as the user's side
// (or with a script that drives the window through the toolkit's events), and closing down.
#pragma once

#include <istream>
#include <string>

namespace host::gui {

// Starts the toolkit and shows the main window; false with `error` when the display cannot be opened.
bool startWindow(std::string& error);

// Runs the command line in the window until the user closes it, or, with a script, until the script ends (a line
// that cannot be carried out stops the run: false with `error` naming the line).
bool runWindow(std::istream* script, const std::string& scriptName, std::string& error);

void stopWindow();

}  // namespace host::gui
