#include "host/main/BesideExecutable.h"

#include <system_error>

namespace cadhost {

std::filesystem::path besideExecutable(const char* name) {
  std::error_code ec;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return {};
  return exe.parent_path() / name;
}

}  // namespace cadhost
