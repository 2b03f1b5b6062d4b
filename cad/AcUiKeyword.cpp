#include "cad/AcUiKeyword.h"

#include <algorithm>

namespace {

std::int32_t positionOf(const std::vector<std::wstring>& names, const std::wstring& text) {
  auto it = std::find(names.begin(), names.end(), text);
  return it == names.end() ? -1 : static_cast<std::int32_t>(it - names.begin());
}

}  // namespace

void AcUiKeyword::Add(const std::wstring& local, const std::wstring& global) {
  globals_.push_back(global);
  locals_.push_back(local);
}

std::wstring AcUiKeyword::DisplayText() const {
  if (locals_.empty()) return {};
  std::wstring text = L"[";
  for (std::size_t i = 0; i < locals_.size(); ++i) {
    if (i > 0) text += L'/';
    text += locals_[i];
  }
  return text + L"]";
}

std::wstring AcUiKeyword::InputList() const {
  if (locals_.empty()) return {};
  std::wstring list;
  for (const std::wstring& local : locals_) list += local + L" ";
  list += L"_ ";
  for (const std::wstring& global : globals_) list += global + L" ";
  return list;
}

std::int32_t AcUiKeyword::IndexOf(const std::wstring& text) const {
  // The host answers a keyword by its global name, whichever name the user typed; a local name that
  // happens to spell another keyword's global name must not win over it.
  std::int32_t index = positionOf(globals_, text);
  return index >= 0 ? index : positionOf(locals_, text);
}
