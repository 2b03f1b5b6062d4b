// The script lines that act as the user on dialogs, message boxes, file dialogs and the toolbar:
// "@dialog ...", "@answer ...", "@toolbar ...", and the lines that wait for a module's worker threads:
//
//   @wait dialog ID [MS]   waits (default 5000 ms) until a dialog with template ID opens, running the UI calls
//                          that worker threads queue meanwhile (a worker's modal dialog opens this way and takes
//                          the following script lines until it closes); a time-out stops the run
//   @wait idle [MS]        runs queued UI calls of worker threads until none is pending and no worker thread
//                          started by a module still runs, or MS (default 5000) have passed; not an error
//
// The script runner hands such lines over here.
#pragma once

#include <string>
#include <string_view>

namespace host::headless {

// True when `line` starts with one of the user-interface verbs handled here.
bool isUiScriptLine(std::string_view line);

// Carries out one such line. On failure returns false and sets `error` to a message for the user
// (the runner adds the script line number).
bool runUiScriptLine(std::string_view line, std::string& error);

}  // namespace host::headless
