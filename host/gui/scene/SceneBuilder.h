// Turns the model space of a drawing into the view's scene: every entity type the store holds, in its layer's
// or its own colour, with frozen and switched-off layers left out and paper space ignored.
#pragma once

#include "host/gui/scene/Scene.h"

namespace dxf {
class Document;
}

namespace host::gui {

Scene buildScene(const dxf::Document& document);

}  // namespace host::gui
