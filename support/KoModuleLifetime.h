#pragma once
// A shared library that starts a thread of its own must not be unmapped while that thread may still run:
// the host may unload the library at any time, and the thread would then run on in code that is gone.

// Keeps the shared library that holds `address` (any function of it) loaded for the rest of the process,
// whatever the host unloads later. False when the library cannot be found or opened again.
bool KoKeepModuleLoaded(const void* address);
