#include "sdk/AcGeMatrix3d.h"

// The process-wide default tolerance modules compare matrices and points with.
AcGeTol AcGeContext::gTol;
