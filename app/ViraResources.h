// The module's German resources (dialog templates and strings), handed to the dialog framework while the
// module is loaded.
#pragma once

#include "sdk/ui/Resources.h"

// The resource module itself; registered from the moment the module file is loaded until it is unloaded.
ui::ResourceHandle ViraGermanResources();
