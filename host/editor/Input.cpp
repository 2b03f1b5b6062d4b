#include "host/editor/Input.h"

#include "host/WideText.h"
#include "host/headless/ScriptInput.h"
#include "host/headless/UiScript.h"

#include <deque>
#include <mutex>

namespace host::editor {
namespace {

struct Queue {
  std::mutex mutex;
  std::deque<Input> inputs;
  std::wstring partial;
  bool afterCarriageReturn = false;  // "\r\n" ends one line, not two
};

Queue& queue() {
  static Queue* q = new Queue;
  return *q;
}

InputSource& source() {
  static InputSource* s = new InputSource;
  return *s;
}

// Dialog, answer and toolbar lines act on the user interface while the prompt waits.
void runUiLine(const std::string& line) {
  std::string error;
  if (!headless::runUiScriptLine(line, error)) throw headless::ScriptError(error);
}

// Without a window a pick is the point typed; the other window lines need the window.
Input headlessWindowLine(const std::string& line) {
  const std::string pick = "@pick";
  if (line.starts_with(pick + " ")) {
    std::string point = line.substr(pick.size() + 1);
    point.erase(0, point.find_first_not_of(" \t"));
    if (!point.empty()) return {InputKind::Text, fromUtf8(point), false};
  }
  throw headless::ScriptError("\"" + line + "\" needs the window (--window)");
}

Input scriptInput() {
  headless::ScriptLine line = headless::pullScriptLine();
  switch (line.kind) {
    case headless::ScriptLineKind::End: return {InputKind::End, {}, false};
    case headless::ScriptLineKind::Escape: return {InputKind::Escape, {}, false};
    case headless::ScriptLineKind::Enter: return {InputKind::Enter, {}, false};
    case headless::ScriptLineKind::Text: return {InputKind::Text, fromUtf8(line.text), false};
    case headless::ScriptLineKind::Ui: runUiLine(line.text); return {InputKind::None, {}, false};
    case headless::ScriptLineKind::Window: return headlessWindowLine(line.text);
  }
  return {InputKind::End, {}, false};
}

bool takeQueued(Input& out) {
  Queue& q = queue();
  std::lock_guard lock(q.mutex);
  if (q.inputs.empty()) return false;
  out = std::move(q.inputs.front());
  q.inputs.pop_front();
  return true;
}

}  // namespace

void queueInput(std::wstring_view text) {
  Queue& q = queue();
  std::lock_guard lock(q.mutex);
  for (wchar_t c : text) {
    bool pairedLineFeed = c == L'\n' && q.afterCarriageReturn;
    q.afterCarriageReturn = c == L'\r';
    if (pairedLineFeed) continue;
    if (c == L'\n' || c == L'\r') {
      bool empty = q.partial.empty();
      q.inputs.push_back({empty ? InputKind::Enter : InputKind::Text, std::move(q.partial), true});
      q.partial.clear();
    } else if (c == 27) {
      q.partial.clear();
      q.inputs.push_back({InputKind::Escape, {}, true});
    } else {
      q.partial += c;
    }
  }
}

void queueEscape() { queueInput(std::wstring(1, wchar_t{27})); }

void clearQueuedInput() {
  Queue& q = queue();
  std::lock_guard lock(q.mutex);
  q.inputs.clear();
  q.partial.clear();
  q.afterCarriageReturn = false;
}

bool hasQueuedInput() {
  Queue& q = queue();
  std::lock_guard lock(q.mutex);
  return !q.inputs.empty();
}

void setInputSource(InputSource s) { source() = std::move(s); }

Input nextInput() {
  for (;;) {
    Input in;
    if (takeQueued(in)) return in;
    in = source() ? source()() : scriptInput();
    if (in.kind != InputKind::None) return in;
  }
}

}  // namespace host::editor
