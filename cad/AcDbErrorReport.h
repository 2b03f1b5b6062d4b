// Naming and reporting failed host calls on the command line.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcadErrorStatus.h"

// The status's qualified name ("Acad::eKeyNotFound"), or "Unknown Error" for a code the host does not
// declare.
const ACHAR* AcDbErrorName(int status);

// Prints "AutoCAD ERROR: <code> - <name> : <context>" (without " : <context>" when context is null) on the
// command line. A success is printed only when `always` is set. Answers the status unchanged, so that a
// host call can be wrapped: `if (AcDbReportError(db->getBlockTable(t), L"Open") != Acad::eOk) ...`.
Acad::ErrorStatus AcDbReportError(Acad::ErrorStatus status, const ACHAR* context = nullptr, bool always = false);
