// Keywords a prompt accepts instead of its value, each with a displayed (local) name and a
// language-independent (global) name that scripts, menus and dialogs send.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class AcUiKeyword {
 public:
  AcUiKeyword() = default;
  virtual ~AcUiKeyword() = default;

  void Add(const std::wstring& local, const std::wstring& global);
  std::size_t Count() const { return locals_.size(); }
  const std::wstring& Local(std::size_t index) const { return locals_.at(index); }
  const std::wstring& Global(std::size_t index) const { return globals_.at(index); }

  // What the prompt shows: "[Abbrechen/Weiter]", empty without keywords.
  std::wstring DisplayText() const;
  // What arms the host's keyword input: "Abbrechen Weiter _ cancel next " (every name followed by a blank,
  // the global names after "_ "); empty without keywords.
  std::wstring InputList() const;
  // The keyword the text names: a global name wins over a local one, compared exactly; -1 when neither.
  std::int32_t IndexOf(const std::wstring& text) const;

 private:
  std::vector<std::wstring> globals_;
  std::vector<std::wstring> locals_;
};
