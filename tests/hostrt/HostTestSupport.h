// Helpers for host tests: capture the transcript, play the user from a list of inputs.
#pragma once

#include "host/Transcript.h"
#include "host/editor/Input.h"

#include <deque>
#include <functional>
#include <string>

namespace hosttest {

class TranscriptCapture {
 public:
  TranscriptCapture() {
    previous_ = host::setTranscriptSink([this](std::string_view text) { text_ += text; });
  }
  ~TranscriptCapture() { host::setTranscriptSink(std::move(previous_)); }
  const std::string& text() const { return text_; }
  void clear() { text_.clear(); }

 private:
  std::string text_;
  host::TranscriptSink previous_;
};

// The user, as a list of inputs; an entry may instead act (like a dialog button) and answer None.
class ScriptedUser {
 public:
  using Step = std::function<host::editor::Input()>;

  ScriptedUser() {
    host::editor::clearQueuedInput();
    host::editor::setInputSource([this] { return nextStep(); });
  }
  ~ScriptedUser() {
    host::editor::setInputSource(nullptr);
    host::editor::clearQueuedInput();
  }

  ScriptedUser& type(const std::wstring& text) {
    steps_.push_back([text] { return host::editor::Input{host::editor::InputKind::Text, text, false}; });
    return *this;
  }
  ScriptedUser& enter() { return kind(host::editor::InputKind::Enter); }
  ScriptedUser& escape() { return kind(host::editor::InputKind::Escape); }
  ScriptedUser& act(std::function<void()> action) {
    steps_.push_back([action] {
      action();
      return host::editor::Input{host::editor::InputKind::None, {}, false};
    });
    return *this;
  }

 private:
  ScriptedUser& kind(host::editor::InputKind k) {
    steps_.push_back([k] { return host::editor::Input{k, {}, false}; });
    return *this;
  }
  host::editor::Input nextStep() {
    if (steps_.empty()) return {host::editor::InputKind::End, {}, false};
    Step step = std::move(steps_.front());
    steps_.pop_front();
    return step();
  }
  std::deque<Step> steps_;
};

}  // namespace hosttest
