// What every interactive prompt remembers: the keyword the user chose instead of a value.
#pragma once

#include <cstdint>

class AcUiPromptBase {
 public:
  AcUiPromptBase() = default;
  virtual ~AcUiPromptBase() = default;

  // The index into the prompt's keyword set after a keyword answer; -1 when the input named none of them.
  std::int32_t ChosenKeyword() const { return chosenKeyword_; }

 protected:
  void SetChosenKeyword(std::int32_t index) { chosenKeyword_ = index; }

 private:
  std::int32_t chosenKeyword_ = 0;
};
