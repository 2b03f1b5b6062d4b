// The real-world drawings the DXF suites read: files written by other CAD programs, kept beside the
// checkout (their licences are their own, so they never enter the repository). Suites that read them
// skip when the folder is absent.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dxfcorpus {

// The folder: $VIRA_DXF_CORPUS when set (to run the suites on another collection), else the
// shared/dxf-corpus folder beside the checkout. Empty when it does not exist.
std::filesystem::path folder();

// Every drawing in the folder (names ending in .dxf or .dxfb, in any case), sorted by name.
std::vector<std::filesystem::path> drawings();

// A name usable as a test name: letters and digits of the file name, the rest as underscores.
std::string testName(const std::filesystem::path& drawing);

}  // namespace dxfcorpus
