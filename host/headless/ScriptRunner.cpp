#include "host/headless/ScriptRunner.h"

#include "host/db/Drawing.h"
#include "host/editor/CommandLine.h"
#include "host/runtime/DocManager.h"
#include "host/runtime/ModuleLoader.h"

#include <exception>

namespace host::headless {
namespace {

ScriptRunner* gActive = nullptr;
void (*gDrawingFiled)() = nullptr;

std::string_view trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  return text;
}

// The first word of a directive line and the rest of it.
std::pair<std::string_view, std::string_view> splitVerb(std::string_view line) {
  std::size_t blank = line.find_first_of(" \t");
  if (blank == std::string_view::npos) return {line, {}};
  return {line.substr(0, blank), trim(line.substr(blank))};
}

}  // namespace

ScriptRunner::ScriptRunner(std::vector<std::string> lines, std::string name)
    : lines_(std::move(lines)), name_(std::move(name)) {
  // A byte order mark some editors put first is not part of the first line.
  if (!lines_.empty() && lines_.front().starts_with("\xEF\xBB\xBF")) lines_.front().erase(0, 3);
}

ScriptRunner::ScriptRunner(std::istream& stream, std::string name) : stream_(&stream), name_(std::move(name)) {}

bool ScriptRunner::fetch(std::string& line) {
  if (stream_) {
    if (!std::getline(*stream_, line)) return false;
    if (lineNumber_ == 0 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
  } else {
    if (lineNumber_ >= lines_.size()) return false;
    line = lines_[lineNumber_];
  }
  ++lineNumber_;
  return true;
}

ScriptRunner* ScriptRunner::active() { return gActive; }

bool ScriptRunner::run(std::string& error) {
  ScriptRunner* previous = gActive;
  gActive = this;
  bool ok = true;
  try {
    editor::runCommandLine();
  } catch (const ScriptError& e) {
    error = name_ + ":" + std::to_string(lineNumber_) + ": " + e.what();
    ok = false;
  } catch (const std::exception& e) {
    error = name_ + ":" + std::to_string(lineNumber_) + ": unexpected failure: " + e.what();
    ok = false;
  }
  gActive = previous;
  return ok;
}

ScriptLine ScriptRunner::next() {
  std::string text;
  while (fetch(text)) {
    std::string_view line = trim(text);
    int number = static_cast<int>(lineNumber_);
    if (line.empty()) return {ScriptLineKind::Enter, {}, number};
    if (line.front() == '#') continue;
    if (line.front() != '@') return {ScriptLineKind::Text, std::string(line), number};
    auto [verb, rest] = splitVerb(line);
    if (verb == "@esc" && rest.empty()) return {ScriptLineKind::Escape, {}, number};
    if (verb == "@dialog" || verb == "@answer" || verb == "@toolbar" || verb == "@wait") {
      // Text typed into a dialog keeps its trailing blanks.
      std::string_view whole = text;
      if (!whole.empty() && whole.back() == '\r') whole.remove_suffix(1);
      return {ScriptLineKind::Ui, std::string(whole.substr(whole.find('@'))), number};
    }
    if (verb == "@pick" || verb == "@screenshot" || verb == "@key" || verb == "@close")
      return {ScriptLineKind::Window, std::string(line), number};
    if (verb == "@open") {
      openDrawing(std::string(rest));
      continue;
    }
    if (verb == "@save") {
      saveDrawing(std::string(rest));
      continue;
    }
    throw ScriptError("unknown script line \"" + std::string(line) + "\"");
  }
  return {ScriptLineKind::End, {}, static_cast<int>(lineNumber_)};
}

void ScriptRunner::openDrawing(const std::string& path) {
  if (path.empty()) throw ScriptError("@open needs the path of a drawing");
  // The command's objects belong to the drawing open now; it cannot be swapped under them.
  if (!editor::activeCommand().empty()) throw ScriptError("cannot open a drawing while a command runs");
  std::string error;
  if (!switchDrawing(path, error)) throw ScriptError(error.empty() ? "cannot open " + path : error);
  if (gDrawingFiled != nullptr) gDrawingFiled();
}

void ScriptRunner::saveDrawing(const std::string& path) {
  std::string error;
  if (!host::hasDrawing()) throw ScriptError("no drawing is open to save");
  if (path.empty() && host::drawingPath().empty()) throw ScriptError("@save needs a path for this drawing");
  if (!host::saveDrawing(path, error)) throw ScriptError(error.empty() ? "cannot save " + path : error);
  // A copy saved elsewhere leaves the drawing's own file as it was.
  if (gDrawingFiled != nullptr && (path.empty() || path == host::drawingPath())) gDrawingFiled();
}

void setDrawingFiledHandler(void (*handler)()) { gDrawingFiled = handler; }

bool switchDrawing(const std::string& path, std::string& error) {
  AcApDocument* doc = runtime::docManager().curDocument();
  bool hadDrawing = host::hasDrawing();
  if (hadDrawing) runtime::broadcastAppMessage(AcRx::kUnloadDwgMsg, doc);
  bool opened = host::openDrawing(path, error);
  if (opened || hadDrawing) runtime::broadcastAppMessage(AcRx::kLoadDwgMsg, doc);
  return opened;
}

bool readScriptLines(std::istream& in, std::vector<std::string>& lines) {
  std::string line;
  while (std::getline(in, line)) lines.push_back(line);
  return in.eof();
}

}  // namespace host::headless
