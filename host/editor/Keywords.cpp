#include "host/editor/Keywords.h"

#include "host/WideText.h"

namespace host::editor {
namespace {

std::vector<std::wstring> splitBlanks(std::wstring_view text) {
  std::vector<std::wstring> words;
  std::wstring word;
  for (wchar_t c : text) {
    if (c == L' ' || c == L'\t') {
      if (!word.empty()) words.push_back(std::move(word));
      word.clear();
    } else {
      word += c;
    }
  }
  if (!word.empty()) words.push_back(std::move(word));
  return words;
}

}  // namespace

std::vector<Keyword> parseKeywordList(std::wstring_view list) {
  std::vector<std::wstring> locals, globals;
  bool afterSeparator = false;
  for (std::wstring& word : splitBlanks(list)) {
    if (word == L"_")
      afterSeparator = true;
    else
      (afterSeparator ? globals : locals).push_back(std::move(word));
  }
  std::vector<Keyword> keywords;
  for (std::size_t i = 0; i < locals.size(); ++i) {
    // Without a global form a keyword is its own global name.
    std::wstring global = i < globals.size() ? globals[i] : locals[i];
    keywords.push_back({std::move(locals[i]), std::move(global)});
  }
  return keywords;
}

const Keyword* matchKeyword(const std::vector<Keyword>& keywords, std::wstring_view input) {
  if (!input.empty() && input.front() == L'_') input.remove_prefix(1);
  if (input.empty()) return nullptr;
  for (const Keyword& k : keywords)
    if (equalsNoCase(k.global, input)) return &k;
  for (const Keyword& k : keywords)
    if (equalsNoCase(k.local, input)) return &k;
  return nullptr;
}

}  // namespace host::editor
