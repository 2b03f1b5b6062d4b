// Message boxes, beeps and the wait cursor. A message box answers with the id of the button chosen
// (IDOK, IDYES, ...). Called from a worker thread, a message box is shown on the UI thread and the worker waits.
#pragma once

#include <string>

#include "sdk/ui/UiTypes.h"

int AfxMessageBox(const std::wstring& text, unsigned type = MB_OK, unsigned helpId = 0);
// Shows string resource `stringId`.
int AfxMessageBox(int stringId, unsigned type = MB_OK, unsigned helpId = 0);

bool MessageBeep(unsigned type);
bool Beep(unsigned frequencyHz, unsigned durationMs);

// The wait cursor is shown while at least one Begin is not yet matched by an End.
void BeginWaitCursor();
void EndWaitCursor();

class CWaitCursor {
 public:
  CWaitCursor() { BeginWaitCursor(); }
  ~CWaitCursor() { EndWaitCursor(); }
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;
  // Shows the wait cursor again after something (a message box) replaced it.
  void Restore() { BeginWaitCursor(); EndWaitCursor(); }
};
