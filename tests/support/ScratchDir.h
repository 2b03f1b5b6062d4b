// A fresh folder for one test in the system's temporary folder, named after this process and the test (so
// that two builds testing at once keep apart), removed with everything in it when the test's fixture goes.
// It is the folder's path, so `dir_ / "drawing.dxf"` names a file in it.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

class ScratchDir : public std::filesystem::path {
 public:
  explicit ScratchDir(const std::string& prefix)
      : path(std::filesystem::temp_directory_path() / (prefix + "-" + std::to_string(::getpid()) + "-" + testName())) {
    std::filesystem::create_directories(*this);
  }
  ~ScratchDir() {
    std::error_code ignored;
    std::filesystem::remove_all(*this, ignored);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

 private:
  // A parameterised test's name holds a slash.
  static std::string testName() {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = info != nullptr ? info->name() : "";
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
  }
};
