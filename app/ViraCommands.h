// The module's commands, all in the group TomaViraCadtoolsV10.
#pragma once

inline constexpr const wchar_t* kViraCommandGroup = L"TomaViraCadtoolsV10";

// Prints "VIRA cadtools " on the command line.
void ViraCadtoolCommand();
// The point capture command ViraPtPickCommand.
#include "capture/ViraPtPickCommand.h"
