// The module's German resources (dialog templates and strings), handed to the dialog framework while the
// module is loaded.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/Resources.h"

// The module's resources as data, built anew on each call. The language libraries start from them too.
ui::ResourceModule ViraMakeGermanResources();

// The toolbar's button images (PNG files, 24 pixels square), in button order.
inline constexpr int kViraToolbarImageSize = 24;
std::vector<std::string> ViraToolbarImages();

// The resource module itself; registered from the moment the module file is loaded until it is unloaded.
ui::ResourceHandle ViraGermanResources();
