// Debug trace lines of the module: short ASCII lines for the developer's debugger channel, never shown to
// the user.
#pragma once

#include "sdk/AcGeMatrix3d.h"

// Formats like printf (at most 1536 bytes, longer lines are cut) and hands the line to the channel.
void ViraTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));
// The matrix, one "%f %f %f %f" line per row.
void ViraTraceMatrix(const AcGeMatrix3d& matrix);
