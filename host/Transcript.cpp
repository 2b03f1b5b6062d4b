#include "host/Transcript.h"

#include <cstdio>
#include <mutex>

namespace host {

void transcriptWrite(std::string_view utf8) {
  // The update-check worker may report while the UI thread prints.
  static std::mutex mutex;
  std::lock_guard lock(mutex);
  std::fwrite(utf8.data(), 1, utf8.size(), stdout);
  std::fflush(stdout);
}

}  // namespace host
