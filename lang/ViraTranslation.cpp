#include "lang/ViraTranslation.h"

#include <string>

#include "app/ViraResources.h"

namespace {

class Translator {
 public:
  explicit Translator(std::span<const ViraTranslation> table) : table_(table) {}

  void operator()(std::wstring& text) const {
    if (text.empty() || lookUp(text)) return;
    if (text.find(L'\n') == std::wstring::npos) return;
    std::wstring result;
    std::size_t start = 0;
    for (;;) {
      const std::size_t end = text.find(L'\n', start);
      std::wstring line = text.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
      lookUp(line);
      result += line;
      if (end == std::wstring::npos) break;
      result += L'\n';
      start = end + 1;
    }
    text = result;
  }

  void operator()(std::vector<ui::MenuItem>& items) const {
    for (ui::MenuItem& item : items) {
      (*this)(item.text);
      (*this)(item.popup);
    }
  }

 private:
  bool lookUp(std::wstring& text) const {
    for (const ViraTranslation& entry : table_) {
      if (text == entry.source) {
        text = entry.text;
        return true;
      }
    }
    return false;
  }

  std::span<const ViraTranslation> table_;
};

}  // namespace

ui::ResourceModule ViraTranslateResources(std::span<const ViraTranslation> table, const wchar_t* libraryName) {
  const Translator translate(table);
  ui::ResourceModule resources = ViraMakeGermanResources();
  resources.name = libraryName;
  for (auto& [id, dialog] : resources.dialogs) {
    translate(dialog.title);
    for (ui::ControlTemplate& control : dialog.controls) translate(control.text);
  }
  for (auto& [id, menu] : resources.menus) translate(menu.items);
  for (auto& [id, text] : resources.strings) translate(text);
  return resources;
}
