#include "host/editor/Prompt.h"

#include "host/Transcript.h"
#include "host/WideText.h"
#include "host/headless/ScriptInput.h"

#include <algorithm>

namespace host::editor {
namespace {

bool gImmediate = false;
PromptRequest gPrompt;
bool gPointPrompt = false;
bool gHasBase = false;
double gBase[3] = {0.0, 0.0, 0.0};
// Prompts answered by the end of the input in a row; a command that keeps asking after the script is
// over would otherwise never end.
int gPromptsAfterEnd = 0;
constexpr int kMaxPromptsAfterEnd = 100;

void writePrompt(std::wstring_view prompt) {
  // One leading line break moves off a line in use; on a fresh line it would only leave an empty one.
  if (!prompt.empty() && prompt.front() == L'\n' && transcriptAtLineStart()) prompt.remove_prefix(1);
  std::string text = toUtf8(prompt);
  if (!text.empty() && text.back() != ':' && text.back() != ' ') text += ": ";
  transcriptWrite(text);
}

std::string echoOf(const Input& in) {
  switch (in.kind) {
    case InputKind::Text: return escapeLineBreaks(toUtf8(in.text));
    case InputKind::Escape:
    case InputKind::End: return "*Cancel*";
    default: return {};
  }
}

}  // namespace

void setImmediatePrompts(bool immediate) { gImmediate = immediate; }

const PromptRequest& currentPrompt() { return gPrompt; }

PointPromptScope::PointPromptScope(const double* base) : wasPoint_(gPointPrompt), hadBase_(gHasBase) {
  std::copy(gBase, gBase + 3, base_);
  gPointPrompt = true;
  gHasBase = base != nullptr;
  if (base != nullptr) std::copy(base, base + 3, gBase);
}

PointPromptScope::~PointPromptScope() {
  gPointPrompt = wasPoint_;
  gHasBase = hadBase_;
  std::copy(base_, base_ + 3, gBase);
}

Input askUser(std::wstring_view prompt, bool quietAtEnd) {
  if (gImmediate) writePrompt(prompt);
  gPrompt.text.assign(prompt);
  gPrompt.wantsPoint = gPointPrompt;
  gPrompt.hasBase = gPointPrompt && gHasBase;
  std::copy(gBase, gBase + 3, gPrompt.base);
  Input in = nextInput();
  if (in.kind == InputKind::End && quietAtEnd) {
    if (gImmediate) transcriptEndLine();
    return in;
  }
  if (in.kind == InputKind::End) {
    if (++gPromptsAfterEnd > kMaxPromptsAfterEnd)
      throw headless::ScriptError("the running command keeps prompting after the script has ended");
  } else {
    gPromptsAfterEnd = 0;
  }
  if (!gImmediate) {
    writePrompt(prompt);
  } else if ((in.kind == InputKind::Text || in.kind == InputKind::Enter) && !in.queued) {
    // A terminal has shown what was typed already.
    transcriptNoteLineEnded();
    return in;
  }
  transcriptWrite(echoOf(in) + "\n");
  return in;
}

void showMessage(std::string_view utf8) {
  transcriptEndLine();
  transcriptWrite(std::string(utf8) + "\n");
}

}  // namespace host::editor
