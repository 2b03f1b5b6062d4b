#include "host/runtime/HostWindows.h"

#include "host/editor/Input.h"
#include "sdk/AcFrame.h"
#include "sdk/ui/CToolBar.h"

#include <string>

namespace {

// Window ids of the host's own children of the main frame.
constexpr int kCommandLineId = 0xE900;
constexpr int kDrawingViewId = 0xE901;

class CommandLineWindow : public CWnd {
 public:
  bool create(CWnd* frame) { return CreateControl(ui::ControlKind::Edit, L"", WS_CHILD | WS_VISIBLE, {}, frame, kCommandLineId); }
  void OnChar(wchar_t ch) override {
    if (ch == L'\r') ch = L'\n';
    host::editor::queueInput(std::wstring(1, ch));
  }
};

class DrawingViewWindow : public CWnd {
 public:
  bool create(CWnd* frame) { return CreateControl(ui::ControlKind::Static, L"", WS_CHILD | WS_VISIBLE, {}, frame, kDrawingViewId); }
};

struct Windows {
  CWnd* frame = nullptr;
  CWnd* commandLine = nullptr;
  CWnd* drawingView = nullptr;
};

Windows gWindows;

template <class Window>
CWnd* headlessChild() {
  // Made on first use, on the user-interface thread, as children of the framework's main frame.
  static Window* window = [] {
    auto* w = new Window;  // lives as long as the host
    w->create(AfxGetMainWnd());
    return w;
  }();
  return window;
}

}  // namespace

namespace host::runtime {

void setHostWindows(CWnd* frame, CWnd* commandLine, CWnd* drawingView) {
  gWindows = {frame, commandLine, drawingView};
}

}  // namespace host::runtime

CWnd* acedGetAcadFrame() { return gWindows.frame ? gWindows.frame : AfxGetMainWnd(); }
CWnd* acedGetAcadTextCmdLine() {
  return gWindows.commandLine ? gWindows.commandLine : headlessChild<CommandLineWindow>();
}
CWnd* acedGetAcadDwgView() {
  return gWindows.drawingView ? gWindows.drawingView : headlessChild<DrawingViewWindow>();
}
