// The host's windows, for modules that dock toolbars or hand the keyboard back to the drawing: the main
// frame, the command-line window and the current drawing view. All are null while the host runs without
// a window.
#pragma once

#include "sdk/AcRx.h"

class CWnd;

ACRX_PORT CWnd* acedGetAcadFrame();
ACRX_PORT CWnd* acedGetAcadTextCmdLine();
ACRX_PORT CWnd* acedGetAcadDwgView();
