#include "app/SendCommandToHost.h"

#include "sdk/AcApDocManager.h"
#include "sdk/AcFrame.h"
#include "sdk/ui/CWnd.h"
#include "sdk/ui/MessageBox.h"

#include <stdexcept>

namespace {

constexpr wchar_t kEscape = 27;

void require(bool condition) {
  if (!condition) throw std::runtime_error("the host cannot take a command now");
}

}  // namespace

bool SendCommandToHost(const wchar_t* text) {
  try {
    AcApDocManager* manager = acDocManagerPtr();
    require(manager != nullptr && text != nullptr);
    AcApDocument* document = manager->curDocument();
    require(document != nullptr);
    require(manager->sendStringToExecute(document, text, true, false, true) == Acad::eOk);
    if (CWnd* frame = acedGetAcadFrame()) frame->SetFocus();
    if (CWnd* view = acedGetAcadDwgView()) view->SendMessage(WM_MOUSEMOVE, 0, 0);
    return true;
  } catch (...) {
    Beep(1000, 100);
    return false;
  }
}

bool CancelHostCommand() {
  if (CWnd* commandLine = acedGetAcadTextCmdLine()) {
    commandLine->PostMessage(WM_CHAR, kEscape, 0);
    commandLine->PostMessage(WM_CHAR, kEscape, 0);
  }
  return true;
}
