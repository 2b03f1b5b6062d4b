// Asking the user on the command line: the prompt, the answer, and both in the transcript.
#pragma once

#include "host/editor/Input.h"

#include <string_view>

namespace host::editor {

// Shows the prompt, waits for the next input and writes the prompt with the answer to the transcript.
// Scripts answer at once, so the prompt is written together with its answer; a person at a terminal
// needs to see it first (immediate prompts).
// The end of the input answers as Escape would ("*Cancel*"), unless `quietAtEnd`: then nothing is written.
Input askUser(std::wstring_view prompt, bool quietAtEnd = false);
void setImmediatePrompts(bool immediate);

// A line of the host's own between prompts (why an answer was refused, an unknown command).
void showMessage(std::string_view utf8);

}  // namespace host::editor
