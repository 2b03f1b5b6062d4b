// What the drawing view needs from the database: which entities are shown highlighted, and a call when
// an entity asks to be drawn again (after a highlight change or an explicit draw()).
#pragma once

#include "sdk/AcDbObjectId.h"

#include <functional>

namespace host {

using RedrawHandler = std::function<void(AcDbObjectId id)>;

// Installs the view's handler (an empty function removes it); returns the one installed before.
RedrawHandler setRedrawHandler(RedrawHandler handler);

bool isHighlighted(AcDbObjectId id);

}  // namespace host

namespace host::db {
void requestRedraw(AcDbObjectId id);
}
