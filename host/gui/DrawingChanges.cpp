#include "host/gui/DrawingChanges.h"

#include "host/db/Drawing.h"
#include "host/dxf/Document.h"

#include <algorithm>
#include <cstddef>

namespace host::gui {
namespace {

struct Filed {
  dxf::Document* document = nullptr;
  std::size_t steps = 0;   // journal steps when the drawing was filed
  std::size_t lowest = 0;  // the fewest steps seen since
  bool repaired = false;   // opened with repairs and not saved to its file since
};

Filed& filed() {
  static Filed state;
  return state;
}

void baseline(dxf::Document* document) {
  Filed& f = filed();
  f.document = document;
  f.steps = f.lowest = document != nullptr ? document->journal().closedSteps() : 0;
  f.repaired = false;
}

}  // namespace

void noteDrawingChanges() {
  dxf::Document* document = host::workingDocument();
  Filed& f = filed();
  // Another drawing than the one seen last was opened: as opened, it is the one in its file.
  if (document != f.document) {
    baseline(document);
    return;
  }
  if (document != nullptr) f.lowest = std::min(f.lowest, document->journal().closedSteps());
}

void drawingFiled() { baseline(host::workingDocument()); }

void drawingRepairedOnOpening() {
  baseline(host::workingDocument());
  filed().repaired = true;
}

bool drawingHasUnsavedChanges() {
  noteDrawingChanges();
  dxf::Document* document = host::workingDocument();
  if (document == nullptr) return false;
  dxf::ChangeJournal& journal = document->journal();
  const Filed& f = filed();
  return f.repaired || journal.stepOpen() || journal.closedSteps() != f.steps || f.lowest < f.steps;
}

}  // namespace host::gui
