// cadhost finds the files it ships with (the module, the window library) in the folder of its own executable,
// wherever it was started from.
#pragma once

#include <filesystem>

namespace cadhost {

// `name` in the folder of the running executable; empty when that folder cannot be told.
std::filesystem::path besideExecutable(const char* name);

}  // namespace cadhost
