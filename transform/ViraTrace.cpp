#include "transform/ViraTrace.h"

#include "sdk/AcDebug.h"

#include <cstdarg>
#include <cstdio>

namespace {

constexpr std::size_t kTraceBufferSize = 1536;

}  // namespace

void ViraTrace(const char* format, ...) {
  char buffer[kTraceBufferSize];
  va_list args;
  va_start(args, format);
  const int written = std::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  if (written < 0) return;
  OutputDebugStringA(buffer);
}

void ViraTraceMatrix(const AcGeMatrix3d& m) {
  for (int row = 0; row < 4; ++row)
    ViraTrace("%f %f %f %f", m(row, 0), m(row, 1), m(row, 2), m(row, 3));
}
