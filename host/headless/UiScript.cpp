// "@dialog", "@answer", "@toolbar" and "@wait" script lines.
#include "host/headless/UiScript.h"

#include <cctype>
#include <chrono>
#include <charconv>
#include <exception>
#include <optional>
#include <vector>

#include "host/Transcript.h"
#include "host/headless/UiDump.h"
#include "host/headless/UiHeadless.h"
#include "host/WideText.h"
#include "host/ui/UiThread.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"

namespace host::headless {
namespace {

struct Token {
  std::string_view text;
  std::size_t offset;
};

class LineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::vector<Token> tokenize(std::string_view line) {
  std::vector<Token> tokens;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && std::isspace(static_cast<unsigned char>(line[i]))) ++i;
    const std::size_t start = i;
    while (i < line.size() && !std::isspace(static_cast<unsigned char>(line[i]))) ++i;
    if (i > start) tokens.push_back({line.substr(start, i - start), start});
  }
  return tokens;
}

std::optional<int> parseInt(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

int intArgument(const std::vector<Token>& tokens, std::size_t index, const std::string& usage) {
  if (index >= tokens.size()) throw LineError("missing argument: " + usage);
  const std::optional<int> value = parseInt(tokens[index].text);
  if (!value) throw LineError("\"" + std::string(tokens[index].text) + "\" is not a number: " + usage);
  return *value;
}

// The rest of the line from token `index` on, as typed (inner blanks kept), or empty.
std::string_view restOfLine(std::string_view line, const std::vector<Token>& tokens, std::size_t index) {
  if (index >= tokens.size()) return {};
  std::string_view rest = line.substr(tokens[index].offset);
  while (!rest.empty() && (rest.back() == '\r' || rest.back() == '\n')) rest.remove_suffix(1);
  return rest;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) return false;
  return true;
}

struct Key {
  unsigned code = 0;
  unsigned modifiers = 0;
  wchar_t ch = 0;
};

Key parseKey(std::string_view name) {
  Key key;
  for (;;) {
    if (name.size() > 6 && equalsNoCase(name.substr(0, 6), "shift+")) {
      key.modifiers |= MK_SHIFT;
      name.remove_prefix(6);
    } else if (name.size() > 5 && equalsNoCase(name.substr(0, 5), "ctrl+")) {
      key.modifiers |= MK_CONTROL;
      name.remove_prefix(5);
    } else {
      break;
    }
  }
  static const struct {
    const char* name;
    unsigned code;
  } named[] = {{"Delete", VK_DELETE}, {"Del", VK_DELETE},       {"Tab", VK_TAB},        {"Return", VK_RETURN},
               {"Enter", VK_RETURN},  {"Escape", VK_ESCAPE},    {"Esc", VK_ESCAPE},     {"Backspace", VK_BACK},
               {"Space", VK_SPACE},   {"Up", VK_UP},            {"Down", VK_DOWN},      {"Left", VK_LEFT},
               {"Right", VK_RIGHT},   {"PageUp", VK_PRIOR},     {"PageDown", VK_NEXT},  {"Home", VK_HOME},
               {"End", VK_END}};
  for (const auto& entry : named) {
    if (equalsNoCase(name, entry.name)) {
      key.code = entry.code;
      if (entry.code == VK_SPACE) key.ch = L' ';
      return key;
    }
  }
  if (name.size() >= 2 && (name[0] == 'F' || name[0] == 'f')) {
    const std::optional<int> n = parseInt(name.substr(1));
    if (n && *n >= 1 && *n <= 12) {
      key.code = VK_F1 + static_cast<unsigned>(*n - 1);
      return key;
    }
  }
  const std::wstring wide = host::fromUtf8(name);
  if (wide.size() == 1 && wide[0] > L' ') {
    const wchar_t c = wide[0];
    key.code = std::isalnum(static_cast<unsigned char>(c)) != 0 && c < 0x80
                   ? static_cast<unsigned>(std::toupper(static_cast<unsigned char>(c)))
                   : 0;
    if ((key.modifiers & MK_CONTROL) == 0) key.ch = c;
    return key;
  }
  throw LineError("unknown key \"" + std::string(name) + "\"");
}

void runDialogLine(std::string_view line, const std::vector<Token>& t) {
  const int id = intArgument(t, 1, "@dialog ID VERB ...");
  if (t.size() < 3) throw LineError("missing verb: @dialog ID VERB ...");
  const std::string_view verb = t[2].text;
  CDialog& dialog = host::ui::findOpenDialog(id);
  if (verb == "dump") {
    transcriptWrite(dumpDialog(dialog));
    return;
  }
  static const std::vector<std::string_view> verbs = {"set", "check", "click", "updown", "key",
                                                       "select", "header", "menu"};
  if (std::find(verbs.begin(), verbs.end(), verb) == verbs.end())
    throw LineError("unknown @dialog verb \"" + std::string(verb) +
                    "\" (set, check, click, updown, key, select, header, menu, dump)");
  const std::string usage = "@dialog ID " + std::string(verb) + " CTRL";
  CWnd& control = host::ui::findControl(dialog, intArgument(t, 3, usage));
  if (verb == "set") {
    host::ui::typeText(control, host::fromUtf8(restOfLine(line, t, 4)));
  } else if (verb == "check") {
    const int state = t.size() > 4 ? parseInt(t[4].text).value_or(-1) : -1;
    if (state != 0 && state != 1) throw LineError("check needs 0 or 1: @dialog ID check CTRL 0|1");
    host::ui::setCheck(control, state == 1);
  } else if (verb == "click") {
    host::ui::clickButton(control);
  } else if (verb == "updown") {
    const std::string_view arrow = t.size() > 4 ? t[4].text : std::string_view();
    if (arrow != "up" && arrow != "down") throw LineError("updown needs up or down: @dialog ID updown CTRL up|down");
    host::ui::pressUpDown(control, arrow == "up");
  } else if (verb == "key") {
    if (t.size() < 5) throw LineError("missing key: @dialog ID key CTRL KEY");
    const Key key = parseKey(t[4].text);
    host::ui::pressKey(control, key.code, key.modifiers, key.ch);
  } else if (verb == "select") {
    std::vector<int> rows;
    for (std::size_t i = 4; i < t.size(); ++i) rows.push_back(intArgument(t, i, "@dialog ID select CTRL ROW..."));
    if (host::ui::kindWord(control) == "combo") {
      if (rows.size() != 1) throw LineError("a drop-down list takes one entry: @dialog ID select CTRL ROW");
      host::ui::chooseEntry(control, rows.front());
    } else {
      host::ui::selectRows(control, rows);
    }
  } else if (verb == "header") {
    host::ui::clickHeader(control, intArgument(t, 4, "@dialog ID header CTRL COL"));
  } else if (verb == "menu") {
    const std::string menuUsage = "@dialog ID menu CTRL ROW COL CMD";
    const int row = intArgument(t, 4, menuUsage);
    const int column = intArgument(t, 5, menuUsage);
    const int command = intArgument(t, 6, menuUsage);
    HeadlessUi::instance().chooseMenuEntry(command);
    try {
      host::ui::rightClickCell(control, row, column);
    } catch (...) {
      HeadlessUi::instance().menuOutcome();
      throw;
    }
    if (const std::optional<std::string> failure = HeadlessUi::instance().menuOutcome())
      throw LineError(*failure + " (" + host::ui::describe(control) + ", row " + std::to_string(row) + ", column " +
                      std::to_string(column) + ")");
  }
}

void runAnswerLine(std::string_view line, const std::vector<Token>& t) {
  const std::string_view what = t.size() > 1 ? t[1].text : std::string_view();
  if (what == "file") {
    const std::string_view path = restOfLine(line, t, 2);
    if (path.empty()) throw LineError("missing path: @answer file PATH|cancel");
    if (path == "cancel") {
      HeadlessUi::instance().queueFileAnswer(std::nullopt);
    } else {
      HeadlessUi::instance().queueFileAnswer(host::fromUtf8(path));
    }
    return;
  }
  if (what == "print") {
    const std::string_view path = restOfLine(line, t, 2);
    if (path.empty()) throw LineError("missing path: @answer print PATH|cancel");
    if (path == "cancel") {
      HeadlessUi::instance().queuePrintAnswer(std::nullopt);
    } else {
      HeadlessUi::instance().queuePrintAnswer(host::fromUtf8(path));
    }
    return;
  }
  if (what == "message") {
    static const struct {
      const char* word;
      int id;
    } answers[] = {{"yes", IDYES}, {"no", IDNO},       {"ok", IDOK},        {"cancel", IDCANCEL},
                   {"abort", IDABORT}, {"retry", IDRETRY}, {"ignore", IDIGNORE}};
    const std::string_view word = t.size() > 2 ? t[2].text : std::string_view();
    for (const auto& answer : answers) {
      if (word == answer.word) {
        HeadlessUi::instance().queueMessageAnswer(answer.id);
        return;
      }
    }
    throw LineError("unknown answer \"" + std::string(word) +
                    "\": @answer message yes|no|ok|cancel|abort|retry|ignore");
  }
  throw LineError(
      "@answer needs file, message or print: @answer file PATH|cancel, @answer message ANSWER, "
      "@answer print PATH|cancel");
}

bool dialogOpen(int templateId) {
  for (CWnd* dialog : ::ui::detail::openDialogs())
    if (::ui::detail::dataOf(*dialog).templateId == templateId) return true;
  return false;
}

// "@wait dialog ID [MS]" and "@wait idle [MS]". Queued calls of workers run meanwhile; a dialog that a worker
// opens runs its modal loop inside this wait and takes the script's next lines, so the wait is over once the
// dialog was opened, whether it is still open or was already closed by those lines.
void runWaitLine(const std::vector<Token>& t) {
  using Clock = std::chrono::steady_clock;
  const std::string_view what = t.size() > 1 ? t[1].text : std::string_view();
  const bool forDialog = what == "dialog";
  if (!forDialog && what != "idle") throw LineError("@wait needs dialog or idle: @wait dialog ID [MS], @wait idle [MS]");
  const std::string usage = forDialog ? "@wait dialog ID [MS]" : "@wait idle [MS]";
  const int id = forDialog ? intArgument(t, 2, usage) : 0;
  const std::size_t msAt = forDialog ? 3 : 2;
  const int ms = t.size() > msAt ? intArgument(t, msAt, usage) : 5000;
  if (ms < 0 || t.size() > msAt + 1) throw LineError("usage: " + usage);
  const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(ms);
  const int openedBefore = forDialog ? host::ui::dialogsOpened(id) : 0;
  auto done = [&] {
    if (forDialog) return dialogOpen(id) || host::ui::dialogsOpened(id) > openedBefore;
    return !host::ui::uiCallsPending() && host::ui::runningWorkerThreads() == 0;
  };
  for (;;) {
    host::ui::runPendingUiCalls();
    if (done()) return;
    const Clock::time_point now = Clock::now();
    if (now >= deadline) break;
    // Short slices: a worker that ends without queueing anything is noticed as well.
    host::ui::waitForWorkerActivity(
        std::min(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now), std::chrono::milliseconds(50)));
  }
  if (forDialog) throw LineError("no dialog " + std::to_string(id) + " opened within " + std::to_string(ms) + " ms");
}

}  // namespace

bool isUiScriptLine(std::string_view line) {
  for (std::string_view verb : {"@dialog", "@answer", "@toolbar", "@wait"}) {
    if (line.substr(0, verb.size()) == verb &&
        (line.size() == verb.size() || std::isspace(static_cast<unsigned char>(line[verb.size()])) != 0))
      return true;
  }
  return false;
}

bool runUiScriptLine(std::string_view line, std::string& error) {
  try {
    const std::vector<Token> tokens = tokenize(line);
    if (tokens.empty() || !isUiScriptLine(line)) throw LineError("not a user-interface line");
    if (tokens[0].text == "@dialog") {
      runDialogLine(line, tokens);
    } else if (tokens[0].text == "@answer") {
      runAnswerLine(line, tokens);
    } else if (tokens[0].text == "@wait") {
      runWaitLine(tokens);
    } else {
      host::ui::pressToolbarButton(intArgument(tokens, 1, "@toolbar CMD"));
    }
    error.clear();
    return true;
  } catch (const std::exception& failure) {
    error = failure.what();
    return false;
  }
}

}  // namespace host::headless
