// The host's command-line transcript: everything the user would read on the command line, alerts,
// message boxes and file dialogs with their answers. Headless runs write it to stdout.
//
// Format (UTF-8):
//   - command-line output (acutPrintf) stands as printed, line breaks included;
//   - a prompt is its text followed by the input that answered it and a line break; ": " separates them
//     unless the prompt already ends in a colon or a blank. A prompt's leading line break is dropped when
//     the transcript already stands at the start of a line, as a CAD command line does not show empty
//     lines between a prompt and the next. Escape shows as "*Cancel*", an empty answer as nothing;
//   - the command line's own prompt is "Command: ";
//   - an alert is one line: [alert] "TEXT" (message boxes and file dialogs write theirs alike);
//   - texts quoted in the transcript (alerts, dialog texts) write their line breaks as \n.
#pragma once

#include <functional>
#include <string_view>

namespace host {

// Appends UTF-8 text to the transcript as it stands (line breaks included).
void transcriptWrite(std::string_view utf8);

// True when nothing has been written yet or the last text ended with a line break.
bool transcriptAtLineStart();

// The user's terminal has ended the line (it echoes what is typed, Enter included).
void transcriptNoteLineEnded();

// Starts a new line unless the transcript already stands at the start of one.
void transcriptEndLine();

// Sends the transcript somewhere else than stdout (the window's command line, a test); an empty function
// restores stdout. Answers the previous sink.
using TranscriptSink = std::function<void(std::string_view)>;
TranscriptSink setTranscriptSink(TranscriptSink sink);

// Debug trace lines (the debugger channel of the module's home platform): on stderr when enabled.
void setTraceEnabled(bool enabled);
bool traceEnabled();
void trace(std::string_view utf8);

}  // namespace host
