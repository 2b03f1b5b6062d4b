// The older name of the language scope, kept for code written before the language libraries.
#pragma once

#include "app/CResourceDll.h"

using ViraResourceScope = CResourceDll;
