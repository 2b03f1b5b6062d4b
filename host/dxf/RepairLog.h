// What the recovery of a damaged drawing repaired, for the user to read: one count per kind of repair,
// in the order the kinds were first met, so that the same file always gives the same report.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dxf {

class RepairLog {
 public:
  void note(std::string_view kind, std::size_t count = 1);
  bool empty() const { return kinds_.empty(); }
  // One line per kind: "<kind>: <count>".
  std::vector<std::string> lines() const;

 private:
  std::vector<std::pair<std::string, std::size_t>> kinds_;
};

}  // namespace dxf
