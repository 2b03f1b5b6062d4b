// Keywords armed for the next prompt. Each has a displayed local name and a language-independent global
// name; the list "local1 local2 _ global1 global2" pairs them by position.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host::editor {

struct Keyword {
  std::wstring local;
  std::wstring global;
};

std::vector<Keyword> parseKeywordList(std::wstring_view list);

// The keyword the input names: by its global name first, then by its local name; a leading "_" of the
// input is ignored, and so is case. Null when none matches.
const Keyword* matchKeyword(const std::vector<Keyword>& keywords, std::wstring_view input);

}  // namespace host::editor
