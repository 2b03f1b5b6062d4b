// Command-line output and alerts of the host interface.
#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/editor/WideFormat.h"
#include "sdk/AcDebug.h"
#include "sdk/AcEd.h"

#include <cstdarg>

int acutPrintf(const ACHAR* format, ...) {
  va_list args;
  va_start(args, format);
  std::wstring text = host::editor::formatWide(format, args);
  va_end(args);
  host::transcriptWrite(host::toUtf8(text));
  return static_cast<int>(text.size());
}

int acedAlert(const ACHAR* message) {
  host::transcriptEndLine();
  host::transcriptWrite("[alert] \"" + host::escapeLineBreaks(host::toUtf8(message ? message : L"")) + "\"\n");
  return RTNORM;
}

namespace {

void traceWithoutLineEnd(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  host::trace(text);
}

}  // namespace

void OutputDebugStringA(const char* text) {
  if (text && host::traceEnabled()) traceWithoutLineEnd(text);
}

void OutputDebugStringW(const wchar_t* text) {
  if (text && host::traceEnabled()) traceWithoutLineEnd(host::toUtf8(text));
}
