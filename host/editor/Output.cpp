// Command-line output and alerts of the host interface.
#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/editor/WideFormat.h"
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
