// The windows behind the host interface's frame accessors (sdk/AcFrame.h). A front end with a screen sets
// its own; without one the host answers the dialog framework's main frame, a command-line window that
// turns the characters it receives into typed input (Escape cancels, a line end ends the input), and an
// empty drawing view.
#pragma once

class CWnd;

namespace host::runtime {

void setHostWindows(CWnd* frame, CWnd* commandLine, CWnd* drawingView);

}  // namespace host::runtime
