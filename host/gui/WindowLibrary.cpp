#include "host/gui/WindowLibrary.h"

#include "host/gui/DrawingChanges.h"
#include "host/gui/WindowSession.h"

extern "C" const host::gui::WindowFunctions* cadhostWindowFunctions() {
  static const host::gui::WindowFunctions functions{
      host::gui::kWindowFunctionsVersion, host::gui::startWindow, host::gui::runWindow, host::gui::stopWindow,
      host::gui::drawingRepairedOnOpening};
  return &functions;
}
