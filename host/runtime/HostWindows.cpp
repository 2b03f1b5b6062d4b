#include "host/runtime/HostWindows.h"

#include "sdk/AcFrame.h"

namespace {

struct Windows {
  CWnd* frame = nullptr;
  CWnd* commandLine = nullptr;
  CWnd* drawingView = nullptr;
};

Windows gWindows;

}  // namespace

namespace host::runtime {

void setHostWindows(CWnd* frame, CWnd* commandLine, CWnd* drawingView) {
  gWindows = {frame, commandLine, drawingView};
}

}  // namespace host::runtime

CWnd* acedGetAcadFrame() { return gWindows.frame; }
CWnd* acedGetAcadTextCmdLine() { return gWindows.commandLine; }
CWnd* acedGetAcadDwgView() { return gWindows.drawingView; }
