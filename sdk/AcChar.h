// Host strings are wide, as in the host's own interface.
#pragma once

using ACHAR = wchar_t;
