// The command line: asks "Command: ", starts the command the user names (its local name, or its global
// name with or without "_"), calls LISP functions written as "(name)", and carries on until the input ends.
#pragma once

#include <string>
#include <string_view>

namespace host::editor {

// Runs until the input ends. An empty line at the command line does nothing (it does not repeat the last
// command, so that blank lines in a script stay harmless). A headless::ScriptError from anywhere below
// ends the run and is passed on.
void runCommandLine();

// Carries out one line typed at the command line; false (with a message on the command line) when it
// names no command or function.
bool executeCommandLine(const std::wstring& text);

// Inside a prompt: "'name" runs a command registered as transparent, then the prompt asks again.
// False when the text does not start with the apostrophe; true when it was handled (run or refused).
bool executeTransparent(std::wstring_view typed);

// The global name of the command running now; empty at the command line.
const std::wstring& activeCommand();

}  // namespace host::editor
