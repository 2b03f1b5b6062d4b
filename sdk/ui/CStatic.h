// Labels, group boxes and etched lines.
#pragma once

#include "sdk/ui/CWnd.h"

class CStatic : public CWnd {};
