// Marks what the host library exports to modules. Modules are built with hidden visibility, so every class
// and function they reach in the host library has to say explicitly that it is visible, or the module would
// link against hidden symbols it cannot resolve at load time.
#pragma once

#define ACDB_PORT __attribute__((visibility("default")))
