// Where the editor's input comes from: first the command-line queue that send-string-to-execute feeds
// (toolbar buttons, a dialog ending the prompt beside it), then the user, who in a headless run is the
// script.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace host::editor {

enum class InputKind {
  Text,    // a line typed (never empty)
  Enter,   // an empty line
  Escape,  // cancel
  End,     // no more input will come (the script is over)
  None,    // the user did something else (acted on a dialog): look at the queue again
};

struct Input {
  InputKind kind = InputKind::End;
  std::wstring text;
  bool queued = false;  // came from the command-line queue, not from the user
};

// Queues typed input: every "\n" or "\r" ends one line, the Escape character (27) cancels; a last piece
// without a line end waits for the rest.
void queueInput(std::wstring_view text);
void queueEscape();
void clearQueuedInput();
bool hasQueuedInput();

// The user's side. The default reads the running script (host/headless/ScriptInput.h).
using InputSource = std::function<Input()>;
void setInputSource(InputSource source);

// The next input: queued input first, then the user.
Input nextInput();

}  // namespace host::editor
