// Moves, turns and scales every entity of model space by one matrix.
#pragma once

#include "sdk/AcGeMatrix3d.h"

// Entities on frozen, switched-off or locked layers keep their place and are not counted; entities that
// cannot be opened are skipped. Reports "<n> Zeichenelemente transformiert" on the command line and
// answers n.
int TransformDrawing(const AcGeMatrix3d& matrix);
