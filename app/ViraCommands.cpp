#include "app/ViraCommands.h"

#include "app/ArxEntries.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "capture/ViraPtPickCommand.h"
#include "transform/ViraCoordDefCommand.h"

void ViraCadtoolCommand() { acutPrintf(L"VIRA cadtools \n"); }

namespace {

// One file holds all three so that the table order is fixed: static objects of one file are made in the
// order they are written.
ArxCommandRegistration gViraCoordDef(kViraCommandGroup, L"_ViraCoordDef", L"ViraCoordDef", ACRX_CMD_TRANSPARENT,
                                     ViraCoordDefCommand);
ArxCommandRegistration gViraPtPick(kViraCommandGroup, L"_ViraPtPick", L"ViraPtPick", ACRX_CMD_TRANSPARENT,
                                   ViraPtPickCommand);
ArxCommandRegistration gViraCadtool(kViraCommandGroup, L"_ViraCadtool", L"ViraCadtool", ACRX_CMD_TRANSPARENT,
                                    ViraCadtoolCommand);

}  // namespace
