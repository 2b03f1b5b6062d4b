#include "cad/AcDbDebugLog.h"

#include <utility>

#include "support/KoLog.h"

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
  Log(level, message);
}

AcDbDebugLogSink AcDbSetDebugLogSink(AcDbDebugLogSink replacement) {
  return std::exchange(sink(), std::move(replacement));
}
