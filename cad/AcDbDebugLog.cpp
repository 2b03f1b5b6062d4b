#include "cad/AcDbDebugLog.h"

#include "sdk/AcDebug.h"

#include <string>
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
  std::string line(message);
  line += '\n';
  OutputDebugStringA(line.c_str());
}

AcDbDebugLogSink AcDbSetDebugLogSink(AcDbDebugLogSink replacement) {
  return std::exchange(sink(), std::move(replacement));
}
