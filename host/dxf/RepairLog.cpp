#include "host/dxf/RepairLog.h"

namespace dxf {

void RepairLog::note(std::string_view kind, std::size_t count) {
  if (count == 0) return;
  for (auto& [k, n] : kinds_) {
    if (k == kind) {
      n += count;
      return;
    }
  }
  kinds_.emplace_back(std::string(kind), count);
}

std::vector<std::string> RepairLog::lines() const {
  std::vector<std::string> out;
  out.reserve(kinds_.size());
  for (const auto& [kind, count] : kinds_) out.push_back(kind + ": " + std::to_string(count));
  return out;
}

}  // namespace dxf
