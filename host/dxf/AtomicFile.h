// Replacing a file so that readers see either the old or the complete new content, never a half-written
// one: write a temporary file beside the target, flush it to disk, rename it over the target.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace dxf {

// `write` fills the open temporary file and returns 0 or the errno of its failure. On any failure the
// target is untouched, the temporary removed, and `error` says what went wrong.
bool replaceFileAtomically(const std::filesystem::path& target, const std::function<int(int fd)>& write,
                           std::string& error);

}  // namespace dxf
