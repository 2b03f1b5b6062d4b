// The windows a front end with a screen gives the host interface's frame accessors (sdk/AcFrame.h).
#pragma once

class CWnd;

namespace host::runtime {

void setHostWindows(CWnd* frame, CWnd* commandLine, CWnd* drawingView);

}  // namespace host::runtime
