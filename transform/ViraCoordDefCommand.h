// The ViraCoordDef command: picks drawing points for the transformation dialog until the dialog ends the
// prompt (OK, Abbrechen) or the user cancels it.
#pragma once

void ViraCoordDefCommand();
