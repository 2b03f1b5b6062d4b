#include "host/editor/CommandLine.h"

#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/db/Undo.h"
#include "host/editor/InputParsing.h"
#include "host/editor/Prompt.h"
#include "host/headless/ScriptInput.h"
#include "host/runtime/CommandStack.h"
#include "host/runtime/LispFunctions.h"
#include "host/runtime/ModuleLoader.h"
#include "sdk/AcEd.h"

#include <exception>
#include <new>

namespace host::editor {
namespace {

std::wstring gActive;

class ActiveCommand {
 public:
  explicit ActiveCommand(std::wstring name) : previous_(std::move(gActive)) { gActive = std::move(name); }
  ~ActiveCommand() { gActive = std::move(previous_); }
  ActiveCommand(const ActiveCommand&) = delete;
  ActiveCommand& operator=(const ActiveCommand&) = delete;

 private:
  std::wstring previous_;
};

// The command's changes as one step: ended when the command ends, and taken back when the host failed
// under them. Should even the report fail (memory still short), the step is taken back all the same.
class CommandChanges {
 public:
  explicit CommandChanges(const std::string& name) : name_(name) { beginCommandChanges(name); }
  ~CommandChanges() {
    if (ended_) return;
    noteCommandFailure("out of memory");
    endCommandChanges();
  }
  CommandChanges(const CommandChanges&) = delete;
  CommandChanges& operator=(const CommandChanges&) = delete;

  // Ends the step and tells what became of it: entities that stayed behind, a take-back.
  void report() {
    CommandOutcome outcome = endCommandChanges();
    ended_ = true;
    if (!outcome.unchangedReport.empty()) showMessage(outcome.unchangedReport);
    if (!outcome.failure.empty())
      showMessage("Command " + name_ + " failed (" + outcome.failure +
                  "): the drawing is restored as it was before the command.");
  }

 private:
  const std::string& name_;
  bool ended_ = false;
};

void runCommand(const runtime::Command& command) {
  // Copied: the command may remove itself (a module unloading) while it runs.
  AcRxFunctionPtr handler = command.functionAddr();
  std::string name = toUtf8(command.globalName());
  ActiveCommand active(command.globalName());
  runtime::ApplicationScope scope(command.owner());
  CommandChanges changes(name);
  try {
    handler();
  } catch (const headless::ScriptError&) {
    changes.report();
    throw;
  } catch (const std::bad_alloc&) {
    // Told after the take-back, which gives the memory back.
    noteCommandFailure("out of memory");
  } catch (const std::exception& e) {
    showMessage("Command " + name + " failed: " + e.what());
  } catch (...) {
    showMessage("Command " + name + " failed.");
  }
  changes.report();
  // Keywords armed but never asked for must not leak into the next command.
  acedInitGet(0, nullptr);
}

// U: takes back the last command that changed the drawing.
void undoCommand() {
  std::string undone;
  if (undoLastCommand(undone))
    showMessage("Undone: " + (undone.empty() ? std::string("changes made outside a command") : undone));
  else
    showMessage("Nothing to undo.");
}

// The host's own commands, registered once before the first command is looked up, in a group of their
// own so that a module's command of the same name comes first.
void registerHostCommands() {
  static const bool registered = [] {
    runtime::ApplicationScope host(nullptr);  // the host's: no module unload takes them away
    runtime::commandStack().addCommand(L"CADHOST", L"U", L"U", ACRX_CMD_MODAL, undoCommand);
    return true;
  }();
  (void)registered;
}

// "(name)": a LISP function call without arguments.
bool callLisp(std::wstring_view text) {
  text = trimBlanks(text.substr(1));
  if (text.empty() || text.back() != L')') {
    showMessage("; error: malformed list on input");
    return false;
  }
  std::wstring name(trimBlanks(text.substr(0, text.size() - 1)));
  if (name.find_first_of(L" \t()") != std::wstring::npos) {
    showMessage("; error: this host calls LISP functions without arguments only");
    return false;
  }
  if (!runtime::lispFunctions().invoke(name)) {
    showMessage("; error: no function definition: " + toUtf8(name));
    return false;
  }
  return true;
}

}  // namespace

const std::wstring& activeCommand() { return gActive; }

bool executeCommandLine(const std::wstring& line) {
  registerHostCommands();
  std::wstring_view text = trimBlanks(line);
  if (text.empty()) return true;
  if (text.front() == L'(') return callLisp(text);
  // An apostrophe asks for a command inside another; at the command line it changes nothing.
  if (text.front() == L'\'') text.remove_prefix(1);
  std::wstring name(text);
  auto* command = static_cast<const runtime::Command*>(runtime::commandStack().lookupCmd(name.c_str()));
  if (!command) {
    showMessage("Unknown command \"" + toUtf8(name) + "\".");
    return false;
  }
  runCommand(*command);
  return true;
}

bool executeTransparent(std::wstring_view typed) {
  if (typed.empty() || typed.front() != L'\'') return false;
  registerHostCommands();
  std::wstring name(trimBlanks(typed.substr(1)));
  auto* command = static_cast<const runtime::Command*>(runtime::commandStack().lookupCmd(name.c_str()));
  if (!command)
    showMessage("Unknown command \"" + toUtf8(name) + "\".");
  else if (!(command->commandFlags() & ACRX_CMD_TRANSPARENT))
    showMessage("** That command may not be invoked transparently **");
  else
    runCommand(*command);
  return true;
}

void runCommandLine() {
  for (;;) {
    Input in = askUser(L"\nCommand: ", true);
    if (in.kind == InputKind::End) return;
    if (in.kind != InputKind::Text) continue;
    // A name the script typed that no command answers to is a broken script; queued input only tells.
    if (!executeCommandLine(in.text) && !in.queued)
      throw headless::ScriptError("\"" + toUtf8(in.text) + "\" is no command or function of this host");
  }
}

}  // namespace host::editor
