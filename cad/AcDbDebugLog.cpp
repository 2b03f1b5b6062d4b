#include "cad/AcDbDebugLog.h"

#include <cstdio>
#include <utility>

namespace {

AcDbDebugLogSink& sink() {
  static AcDbDebugLogSink current;
  return current;
}

}  // namespace

void AcDbDebugLog(int level, std::string_view message) {
  if (sink()) {
    sink()(level, message);
    return;
  }
  std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
}

AcDbDebugLogSink AcDbSetDebugLogSink(AcDbDebugLogSink replacement) {
  return std::exchange(sink(), std::move(replacement));
}
