// Asking the user on the command line: the prompt, the answer, and both in the transcript.
#pragma once

#include "host/editor/Input.h"

#include <string>
#include <string_view>

namespace host::editor {

// Shows the prompt, waits for the next input and writes the prompt with the answer to the transcript.
// Scripts answer at once, so the prompt is written together with its answer; a person at a terminal
// needs to see it first (immediate prompts).
// The end of the input answers as Escape would ("*Cancel*"), unless `quietAtEnd`: then nothing is written.
Input askUser(std::wstring_view prompt, bool quietAtEnd = false);
void setImmediatePrompts(bool immediate);

// What the prompt that waits now asks for, for a front end that shows it: the window's prompt area with its
// keywords, the crosshair and the rubber band from the base point of a point prompt.
struct PromptRequest {
  std::wstring text;
  bool wantsPoint = false;
  bool hasBase = false;
  double base[3] = {0.0, 0.0, 0.0};
};
const PromptRequest& currentPrompt();

// Marks the prompts asked while it lives as point prompts (with the base point when not null).
class PointPromptScope {
 public:
  explicit PointPromptScope(const double* base);
  ~PointPromptScope();
  PointPromptScope(const PointPromptScope&) = delete;
  PointPromptScope& operator=(const PointPromptScope&) = delete;

 private:
  bool wasPoint_;
  bool hadBase_;
  double base_[3];
};

// A line of the host's own between prompts (why an answer was refused, an unknown command).
void showMessage(std::string_view utf8);

}  // namespace host::editor
