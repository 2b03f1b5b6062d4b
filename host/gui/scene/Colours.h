// The 256 colours of the CAD colour index, as a dark drawing area shows them (index 7 is white there).
#pragma once

#include "host/gui/scene/Scene.h"

namespace host::gui {

// The colour of index 1..255; other indexes give white.
Rgb indexColour(int index);

}  // namespace host::gui
