// The running script is the user of a headless host: the command line, prompts and modal dialogs all take
// their next action from it, in script order. The script runner owns the cursor; these calls let the other
// parts of the host (editor prompts, modal dialog loops) take the next line where they wait for the user.
#pragma once

#include <stdexcept>
#include <string>

namespace host::headless {

enum class ScriptLineKind {
  End,     // the script has no more lines (or no script is running)
  Ui,      // "@dialog ...", "@answer ...", "@toolbar ...", "@wait ...": hand to runUiScriptLine()
  Escape,  // "@esc"
  Enter,   // an empty line
  Text,    // anything else: typed at the command line
  Window,  // "@pick ...", "@screenshot ...", "@key ...", "@close": acts on the window (headless: @pick types the point)
};

struct ScriptLine {
  ScriptLineKind kind = ScriptLineKind::End;
  std::string text;     // the line without its line ending (empty for End)
  int lineNumber = 0;   // 1-based line number in the script file
};

// Takes the next line of the running script; comment lines are skipped, "@open"/"@save" are carried out
// by the runner itself and skipped here.
ScriptLine pullScriptLine();

// Thrown by any part of the host when a script line cannot be carried out; the runner stops the run,
// prints the message with the line number and exits with a non-zero status.
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace host::headless
