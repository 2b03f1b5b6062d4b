// Files, the independent DXF reader (ezdxf under Debian's python) and the generated corpus for the DXF
// store's tests.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/ReadFile.h"

namespace dxftest {

// A fresh directory for one test, inside the build tree.
std::filesystem::path scratchDir(const std::string& name);

// The drawings written by tests/dxf/make_corpus.py, one per version, generated once per run.
const std::vector<std::filesystem::path>& corpus();

// Runs Debian's python with these arguments (a script and its arguments); returns its exit status, what it
// printed in `output`.
int runPython(std::vector<std::string> args, std::string& output);

// Runs tests/dxf/check_drawing.py with these arguments; returns its exit status, its output in `output`.
int checkDrawing(const std::vector<std::string>& args, std::string& output);

using ::readFile;
void writeFile(const std::filesystem::path& path, const std::string& bytes);

}  // namespace dxftest
