// The script lines that act as the user on dialogs, message boxes, file dialogs and the toolbar:
// "@dialog ...", "@answer ...", "@toolbar ...". The script runner hands such lines over here.
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
