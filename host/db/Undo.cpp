#include "host/db/Undo.h"

#include "host/db/DbModel.h"
#include "host/db/DrawingView.h"

#include <vector>

namespace host {
namespace {

struct UnchangedGroup {
  std::string type;
  std::string reason;
  long count = 0;
};

struct CommandState {
  int depth = 0;
  AcDbImpDatabase* drawing = nullptr;  // the drawing the outermost command started on
  std::string failure;
  std::vector<UnchangedGroup> unchanged;  // in the order first seen
  bool anyTakenBack = false;
};

CommandState& state() {
  static auto* s = new CommandState;
  return *s;
}

dxf::ChangeJournal::Observer observerFor(AcDbImpDatabase& drawing) {
  // A restored record needs nothing of the host: its objects read the store, and what the host remembers
  // of layers is forgotten after every take-back.
  return {{}, [&drawing](dxf::Entity& e) { drawing.dropped(e); }};
}

std::string unchangedReport(const std::vector<UnchangedGroup>& groups) {
  long total = 0;
  for (const UnchangedGroup& g : groups) total += g.count;
  if (total == 0) return {};
  std::string line = std::to_string(total) + (total == 1 ? " entity stayed where it was: " : " entities stayed where they were: ");
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (i > 0) line += ", ";
    line += std::to_string(groups[i].count) + " " + groups[i].type + " (" + groups[i].reason + ")";
  }
  return line;
}

}  // namespace

void beginCommandChanges(std::string_view commandName) {
  CommandState& s = state();
  if (s.depth++ > 0) return;
  s.failure.clear();
  s.unchanged.clear();
  s.drawing = db::workingDrawing();
  if (s.drawing) s.drawing->doc().journal().beginStep(std::string(commandName));
}

CommandOutcome endCommandChanges() {
  CommandState& s = state();
  CommandOutcome outcome;
  if (s.depth == 0 || --s.depth > 0) return outcome;
  // The drawing may have been closed under the command; its journal went with it.
  AcDbImpDatabase* drawing = s.drawing == db::workingDrawing() ? s.drawing : nullptr;
  s.drawing = nullptr;
  if (drawing != nullptr) {
    dxf::ChangeJournal& journal = drawing->doc().journal();
    if (s.failure.empty()) {
      journal.endStep();
    } else {
      journal.rollbackStep(observerFor(*drawing));
      drawing->layersChanged();
      s.anyTakenBack = true;
      db::requestRedraw(AcDbObjectId());
    }
  }
  outcome.failure = std::move(s.failure);
  outcome.unchangedReport = unchangedReport(s.unchanged);
  s.failure.clear();
  s.unchanged.clear();
  return outcome;
}

void noteCommandFailure(std::string_view reason) {
  CommandState& s = state();
  if (s.depth > 0 && s.failure.empty()) s.failure = reason;
}

void noteEntityUnchanged(std::string_view dxfType, std::string_view reason) {
  CommandState& s = state();
  if (s.depth == 0) return;
  for (UnchangedGroup& g : s.unchanged) {
    if (g.type == dxfType && g.reason == reason) {
      ++g.count;
      return;
    }
  }
  s.unchanged.push_back(UnchangedGroup{std::string(dxfType), std::string(reason), 1});
}

bool undoLastCommand(std::string& commandName) {
  AcDbImpDatabase* drawing = db::workingDrawing();
  if (drawing == nullptr) return false;
  if (!drawing->doc().journal().undoStep(observerFor(*drawing), &commandName)) return false;
  drawing->layersChanged();
  db::requestRedraw(AcDbObjectId());
  return true;
}

bool anyCommandTakenBack() { return state().anyTakenBack; }

}  // namespace host
