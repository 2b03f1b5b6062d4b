#include "host/headless/UiHeadless.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/headless/ScriptInput.h"
#include "host/headless/TablePdf.h"
#include "host/headless/UiScript.h"
#include "host/ui/UiThread.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"

namespace host::headless {
namespace {

struct Button {
  int id;
  const char* word;
};

std::vector<Button> buttonsOf(unsigned type) {
  switch (type & 0xF) {
    case MB_OKCANCEL: return {{IDOK, "ok"}, {IDCANCEL, "cancel"}};
    case MB_ABORTRETRYIGNORE: return {{IDABORT, "abort"}, {IDRETRY, "retry"}, {IDIGNORE, "ignore"}};
    case MB_YESNOCANCEL: return {{IDYES, "yes"}, {IDNO, "no"}, {IDCANCEL, "cancel"}};
    case MB_YESNO: return {{IDYES, "yes"}, {IDNO, "no"}};
    case MB_RETRYCANCEL: return {{IDRETRY, "retry"}, {IDCANCEL, "cancel"}};
    default: return {{IDOK, "ok"}};
  }
}

const char* wordOf(int id) {
  static const Button all[] = {{IDOK, "ok"},       {IDCANCEL, "cancel"}, {IDABORT, "abort"}, {IDRETRY, "retry"},
                               {IDIGNORE, "ignore"}, {IDYES, "yes"},       {IDNO, "no"}};
  for (const Button& b : all)
    if (b.id == id) return b.word;
  return "?";
}

// What a person does when walking away from a box: Cancel where there is one, else No, else the last button.
int cancelAnswer(const std::vector<Button>& buttons) {
  for (int id : {IDCANCEL, IDNO})
    for (const Button& b : buttons)
      if (b.id == id) return id;
  return buttons.back().id;
}

void runUiLine(const ScriptLine& line) {
  std::string error;
  if (!runUiScriptLine(line.text, error)) throw ScriptError(error);
}

// Takes script lines until `answered` says the waiting question has its answer. Returns the kind of line that
// ended the wait without an answer (Escape, End or Enter), or Ui when it was answered.
template <typename Answered>
ScriptLineKind waitForAnswer(const std::string& what, Answered answered) {
  while (!answered()) {
    host::ui::runPendingUiCalls();
    const ScriptLine line = pullScriptLine();
    switch (line.kind) {
      case ScriptLineKind::Ui: runUiLine(line); break;
      case ScriptLineKind::Text:
        throw ScriptError(what + " is waiting for an answer; \"" + line.text + "\" cannot be typed now");
      default: return line.kind;
    }
  }
  return ScriptLineKind::Ui;
}

// Return or Escape as a key of the control with the focus, so that an editor open over a list sees it first.
void pressInDialog(CDialog& dialog, unsigned key) {
  CWnd* focus = CWnd::GetFocus();
  if (focus != nullptr && ::ui::detail::topLevelOf(*focus) == &dialog && focus->IsWindowVisible()) {
    host::ui::pressKey(*focus, key, 0, 0);
  } else {
    dialog.OnCommand(key == VK_RETURN ? dialog.GetDefID() : IDCANCEL, BN_CLICKED);
  }
}

const ::ui::MenuItem* findEntry(const std::vector<::ui::MenuItem>& items, int id) {
  for (const ::ui::MenuItem& item : items) {
    if (item.popup.empty() && item.id == id && !item.text.empty()) return &item;
    if (const ::ui::MenuItem* inner = findEntry(item.popup, id)) return inner;
  }
  return nullptr;
}

// The entries of a menu as the user sees them: "[menu] "TEXT" ...", a greyed one followed by "disabled".
std::string menuLine(const std::vector<::ui::MenuItem>& items) {
  std::string line = "[menu]";
  std::vector<const ::ui::MenuItem*> pending;
  for (auto it = items.rbegin(); it != items.rend(); ++it) pending.push_back(&*it);
  while (!pending.empty()) {
    const ::ui::MenuItem* item = pending.back();
    pending.pop_back();
    if (!item->popup.empty()) {
      for (auto it = item->popup.rbegin(); it != item->popup.rend(); ++it) pending.push_back(&*it);
      continue;
    }
    if (item->text.empty()) continue;  // separator
    line += " \"" + escapeForTranscript(item->text) + "\"";
    if ((item->flags & (MF_GRAYED | MF_DISABLED)) != 0) line += " disabled";
  }
  return line;
}

}  // namespace

std::string escapeForTranscript(const std::wstring& text) { return escapeLineBreaks(toUtf8(text)); }

HeadlessUi& HeadlessUi::instance() {
  static HeadlessUi backend;
  return backend;
}

void HeadlessUi::queueFileAnswer(std::optional<std::wstring> path) { fileAnswers_.push_back(std::move(path)); }
void HeadlessUi::queueMessageAnswer(int id) { messageAnswers_.push_back(id); }
void HeadlessUi::queuePrintAnswer(std::optional<std::wstring> path) { printAnswers_.push_back(std::move(path)); }

void HeadlessUi::chooseMenuEntry(int id) {
  menuChoice_ = id;
  menuOutcome_.reset();
}

std::optional<std::string> HeadlessUi::menuOutcome() {
  std::optional<std::string> outcome = menuOutcome_;
  if (menuChoice_) outcome = "no context menu was opened";
  menuChoice_.reset();
  menuOutcome_.reset();
  return outcome;
}

void HeadlessUi::reset() {
  fileAnswers_.clear();
  messageAnswers_.clear();
  printAnswers_.clear();
  menuChoice_.reset();
  menuOutcome_.reset();
}

int HeadlessUi::messageBox(const std::wstring& text, const std::wstring& caption, unsigned type) {
  const std::vector<Button> buttons = buttonsOf(type);
  int answer = 0;
  if (messageAnswers_.empty() && buttons.size() > 1) {
    const ScriptLineKind ended = waitForAnswer("the message box \"" + escapeForTranscript(text) + "\"",
                                               [&] { return !messageAnswers_.empty(); });
    if (ended == ScriptLineKind::Enter) answer = buttons.front().id;
    if (ended == ScriptLineKind::Escape || ended == ScriptLineKind::End) answer = cancelAnswer(buttons);
  }
  if (answer == 0 && !messageAnswers_.empty()) {
    answer = messageAnswers_.front();
    messageAnswers_.pop_front();
    if (std::none_of(buttons.begin(), buttons.end(), [&](const Button& b) { return b.id == answer; }))
      throw ScriptError("the message box \"" + escapeForTranscript(text) + "\" has no button " + wordOf(answer));
  }
  if (answer == 0) answer = IDOK;
  std::string words;
  for (const Button& b : buttons) words += (words.empty() ? "" : "/") + std::string(b.word);
  const std::string head = caption.empty() ? "[message]" : "[message \"" + escapeForTranscript(caption) + "\"]";
  transcriptWrite(head + " \"" + escapeForTranscript(text) + "\" (" + words + ") -> " + wordOf(answer) + "\n");
  return answer;
}

bool HeadlessUi::fileDialog(const CFileDialog& dialog, std::wstring& path) {
  const std::string what = dialog.IsOpenDialog() ? "file open" : "file save";
  bool cancelled = false;
  if (fileAnswers_.empty()) {
    const ScriptLineKind ended = waitForAnswer("the " + what + " dialog", [&] { return !fileAnswers_.empty(); });
    cancelled = ended != ScriptLineKind::Ui;
  }
  std::optional<std::wstring> answer;
  if (!cancelled) {
    answer = fileAnswers_.front();
    fileAnswers_.pop_front();
  }
  if (answer && (dialog.GetFlags() & OFN_FILEMUSTEXIST) != 0 && ::access(host::toUtf8(*answer).c_str(), F_OK) != 0)
    throw ScriptError("the " + what + " dialog needs an existing file; " + host::toUtf8(*answer) + " does not exist");
  transcriptWrite("[" + what + "] \"" + escapeForTranscript(dialog.GetFilter()) + "\" -> " +
                  (answer ? escapeForTranscript(*answer) : std::string("cancel")) + "\n");
  if (!answer) return false;
  path = *answer;
  return true;
}

int HeadlessUi::trackPopupMenu(const std::vector<::ui::MenuItem>& items, CWnd*) {
  if (!menuChoice_) return 0;  // nobody picks an entry: the menu is dismissed
  const int id = *menuChoice_;
  menuChoice_.reset();
  const ::ui::MenuItem* entry = findEntry(items, id);
  if (entry == nullptr) {
    menuOutcome_ = "the context menu has no entry " + std::to_string(id);
    return 0;
  }
  if ((entry->flags & (MF_GRAYED | MF_DISABLED)) != 0) {
    menuOutcome_ = "the context menu entry " + std::to_string(id) + " is greyed out";
    return 0;
  }
  menuOutcome_ = std::nullopt;
  transcriptWrite(menuLine(items) + " -> \"" + escapeForTranscript(entry->text) + "\"\n");
  return id;
}

void HeadlessUi::runModalLoop(CDialog& dialog) {
  const int templateId = dialog.GetTemplateId();
  auto running = [&] {
    return ::ui::detail::isAlive(&dialog) && dialog.GetSafeHwnd() != nullptr &&
           ::ui::detail::dataOf(dialog).modalRunning;
  };
  while (running()) {
    host::ui::runPendingUiCalls();
    if (!running()) break;
    const ScriptLine line = pullScriptLine();
    switch (line.kind) {
      case ScriptLineKind::Ui: runUiLine(line); break;
      case ScriptLineKind::Text:
        throw ScriptError("dialog " + std::to_string(templateId) + " is open; \"" + line.text +
                          "\" cannot be typed at the command line now");
      case ScriptLineKind::Window:
        throw ScriptError("dialog " + std::to_string(templateId) + " is open; \"" + line.text +
                          "\" needs the window (--window)");
      case ScriptLineKind::Enter: pressInDialog(dialog, VK_RETURN); break;
      case ScriptLineKind::Escape: pressInDialog(dialog, VK_ESCAPE); break;
      case ScriptLineKind::End:
        dialog.OnCommand(IDCANCEL, BN_CLICKED);
        // Nobody is left to close it: a dialog that refuses Cancel is closed anyway.
        if (running()) dialog.EndDialog(IDCANCEL);
        break;
    }
  }
}

::ui::PrintResult HeadlessUi::printTable(const ::ui::PrintTable& table, std::wstring& error) {
  bool cancelled = false;
  if (printAnswers_.empty()) {
    const ScriptLineKind ended = waitForAnswer("the print dialog", [&] { return !printAnswers_.empty(); });
    cancelled = ended != ScriptLineKind::Ui;
  }
  std::optional<std::wstring> answer;
  if (!cancelled) {
    answer = printAnswers_.front();
    printAnswers_.pop_front();
  }
  std::string line = "[print] \"" + escapeForTranscript(table.title) + "\" -> ";
  if (!answer) {
    transcriptWrite(line + "cancel\n");
    return ::ui::PrintResult::Cancelled;
  }
  const int pages = tablePageCount(table);
  transcriptWrite(line + escapeForTranscript(*answer) + " (" + std::to_string(pages) +
                  (pages == 1 ? " page)\n" : " pages)\n"));
  std::string failure;
  if (!writeTablePdf(table, toUtf8(*answer), failure)) {
    error = fromUtf8(failure);
    return ::ui::PrintResult::Failed;
  }
  return ::ui::PrintResult::Printed;
}

void HeadlessUi::beep(unsigned frequencyHz, unsigned durationMs) {
  transcriptWrite("[beep " + std::to_string(frequencyHz) + " Hz " + std::to_string(durationMs) + " ms]\n");
}

void HeadlessUi::messageBeep(unsigned) { transcriptWrite("[beep]\n"); }

int HeadlessUi::textWidth(const CWnd*, const std::wstring& text) { return 6 * static_cast<int>(text.size()); }

CSize HeadlessUi::dialogBaseUnits(const CWnd*) { return CSize(6, 13); }

}  // namespace host::headless
