#include "host/dxf/RecordType.h"

#include <array>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_set>

namespace dxf {

std::string_view RecordType::intern(std::string_view text) {
  if (text.empty()) return {};
  // A file mostly repeats the last few types (an INSERT's ATTRIBs and SEQEND, runs of LINEs): those are
  // found without the lock. Each thread keeps its own few.
  thread_local std::array<std::string_view, 8> recent{};
  thread_local std::size_t next = 0;
  for (const std::string_view kept : recent)
    if (kept == text) return kept;

  // Never emptied: the set holds each type once, and every record of every drawing may point into it.
  // A node set, so that a kept text never moves.
  static std::mutex lock;
  static std::unordered_set<std::string> kept;
  std::string_view found;
  {
    const std::scoped_lock guard(lock);
    found = *kept.emplace(text).first;
  }
  recent[next] = found;
  next = (next + 1) % recent.size();
  return found;
}

}  // namespace dxf
