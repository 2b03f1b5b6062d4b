#include "host/Transcript.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace host {
namespace {

// The update-check worker may report while the UI thread prints.
std::mutex& transcriptMutex() {
  static std::mutex mutex;
  return mutex;
}

struct TranscriptState {
  TranscriptSink sink;
  bool atLineStart = true;
};

TranscriptState& state() {
  static TranscriptState* s = new TranscriptState;
  return *s;
}

std::atomic<bool> gTrace{false};

}  // namespace

void transcriptWrite(std::string_view utf8) {
  if (utf8.empty()) return;
  std::lock_guard lock(transcriptMutex());
  TranscriptState& s = state();
  if (s.sink) {
    s.sink(utf8);
  } else {
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
    std::fflush(stdout);
  }
  s.atLineStart = utf8.back() == '\n';
}

bool transcriptAtLineStart() {
  std::lock_guard lock(transcriptMutex());
  return state().atLineStart;
}

void transcriptNoteLineEnded() {
  std::lock_guard lock(transcriptMutex());
  state().atLineStart = true;
}

void transcriptEndLine() {
  if (!transcriptAtLineStart()) transcriptWrite("\n");
}

TranscriptSink setTranscriptSink(TranscriptSink sink) {
  std::lock_guard lock(transcriptMutex());
  TranscriptSink previous = std::move(state().sink);
  state().sink = std::move(sink);
  state().atLineStart = true;
  return previous;
}

void setTraceEnabled(bool enabled) { gTrace = enabled; }
bool traceEnabled() { return gTrace; }

void trace(std::string_view utf8) {
  if (!gTrace) return;
  std::lock_guard lock(transcriptMutex());
  std::fprintf(stderr, "[trace] %.*s\n", static_cast<int>(utf8.size()), utf8.data());
}

}  // namespace host
