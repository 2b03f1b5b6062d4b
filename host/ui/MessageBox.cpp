// Message boxes, beeps and the wait cursor.
#include "sdk/ui/MessageBox.h"

#include <atomic>

#include "host/ui/UiBackend.h"
#include "host/ui/UiThread.h"
#include "sdk/ui/CWnd.h"
#include "sdk/ui/Resources.h"

namespace {

int showMessageBox(const std::wstring& text, const std::wstring& caption, unsigned type) {
  int answer = IDCANCEL;
  host::ui::runOnUiThread([&] { answer = host::ui::backend().messageBox(text, caption, type); });
  return answer;
}

std::atomic<int> waitCursorDepth{0};

}  // namespace

int AfxMessageBox(const std::wstring& text, unsigned type, unsigned) { return showMessageBox(text, {}, type); }

int AfxMessageBox(int stringId, unsigned type, unsigned helpId) {
  std::wstring text;
  AfxLoadString(stringId, text);
  return AfxMessageBox(text, type, helpId);
}

int CWnd::MessageBox(const std::wstring& text, const std::wstring& caption, unsigned type) {
  return showMessageBox(text, caption, type);
}

bool MessageBeep(unsigned type) {
  host::ui::backend().messageBeep(type);
  return true;
}

bool Beep(unsigned frequencyHz, unsigned durationMs) {
  host::ui::backend().beep(frequencyHz, durationMs);
  return true;
}

void BeginWaitCursor() {
  if (waitCursorDepth.fetch_add(1) == 0) host::ui::backend().setWaitCursor(true);
}

void EndWaitCursor() {
  int depth = waitCursorDepth.load();
  // An End without a Begin is ignored rather than driving the count below zero.
  while (depth > 0 && !waitCursorDepth.compare_exchange_weak(depth, depth - 1)) {
  }
  if (depth == 1) host::ui::backend().setWaitCursor(false);
}
