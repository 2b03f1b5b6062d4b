// The debugger output channel: trace lines for developers, never messages for the user. The host shows
// them only when asked to (cadhost --trace prints them on standard error).
#pragma once

#include "sdk/AcRx.h"

ACRX_PORT void OutputDebugStringA(const char* text);
ACRX_PORT void OutputDebugStringW(const wchar_t* text);
