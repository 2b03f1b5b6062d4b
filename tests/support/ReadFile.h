// The whole content of a file as bytes, empty when it cannot be read: what tests compare saved drawings,
// transcripts and protocol files with.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}
