// The prompts of the host interface: points, numbers and keywords, each armed by acedInitGet.
#include "host/editor/CommandLine.h"
#include "host/editor/InputParsing.h"
#include "host/editor/Keywords.h"
#include "host/editor/Prompt.h"
#include "sdk/AcEd.h"

#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

namespace {

using host::editor::InputKind;

// What acedInitGet armed; it holds for the next prompt only.
struct Armed {
  int flags = 0;
  std::vector<host::editor::Keyword> keywords;
};

Armed gArmed;
// The keyword (global name) or free text that answered the last prompt, for acedGetInput.
std::wstring gLastInput;

Armed takeArmed() {
  Armed armed = std::move(gArmed);
  gArmed = Armed{};
  return armed;
}

int copyOut(const std::wstring& text, ACHAR* buffer, std::size_t size) {
  if (!buffer || size == 0) return RTERROR;
  std::size_t n = std::min(text.size(), size - 1);
  std::wmemcpy(buffer, text.data(), n);
  buffer[n] = L'\0';
  return RTNORM;
}

// The loop every prompt shares: Escape and the end of the input cancel; Enter answers RTNONE unless
// refused; an armed keyword answers RTKWORD; `accept` takes the value; anything else is refused with
// `refusal` and asked again, as a CAD command line does.
template <class Accept>
int ask(const ACHAR* prompt, const char* refusal, Accept accept) {
  Armed armed = takeArmed();
  for (;;) {
    host::editor::Input in = host::editor::askUser(prompt ? prompt : L"");
    switch (in.kind) {
      case InputKind::Escape:
      case InputKind::End:
        return RTCAN;
      case InputKind::Enter:
      case InputKind::None:  // not handed out by nextInput()
        if (armed.flags & RSG_NONULL) break;
        return RTNONE;
      case InputKind::Text: {
        std::wstring_view typed = host::editor::trimBlanks(in.text);
        if (typed.empty()) {
          if (armed.flags & RSG_NONULL) break;
          return RTNONE;
        }
        // The prompt is asked again after a command run in between.
        if (host::editor::executeTransparent(typed)) continue;
        if (const auto* k = host::editor::matchKeyword(armed.keywords, typed)) {
          gLastInput = k->global;
          return RTKWORD;
        }
        const char* why = accept(typed, armed.flags);
        if (!why) return RTNORM;
        if (*why) {
          host::editor::showMessage(why);
          continue;
        }
        if (armed.flags & RSG_OTHER) {
          gLastInput = typed;
          return RTKWORD;
        }
        break;
      }
    }
    host::editor::showMessage(refusal);
  }
}

}  // namespace

int acedInitGet(int flags, const ACHAR* keywordList) {
  gArmed.flags = flags;
  gArmed.keywords = host::editor::parseKeywordList(keywordList ? keywordList : L"");
  return RTNORM;
}

int acedGetPoint(const ads_point basePoint, const ACHAR* prompt, ads_point result) {
  if (!result) return RTERROR;
  host::editor::PointPromptScope pointPrompt(basePoint);
  const char* refusal = gArmed.keywords.empty() ? "Invalid point." : "Point or option keyword required.";
  // accept answers null for a value taken, "" for "not a value", or a message of its own.
  return ask(prompt, refusal, [&](std::wstring_view typed, int) -> const char* {
    double point[3];
    if (!host::editor::parsePoint(typed, point)) return "";
    std::copy(point, point + 3, result);
    return nullptr;
  });
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
  if (!result) return RTERROR;
  const char* refusal = gArmed.keywords.empty() ? "Requires numeric value."
                                                : "Requires numeric value or option keyword.";
  return ask(prompt, refusal, [&](std::wstring_view typed, int flags) -> const char* {
    double value = 0.0;
    if (!host::editor::parseReal(typed, value)) return "";
    if ((flags & RSG_NOZERO) && value == 0.0) return "Value must be nonzero.";
    if ((flags & RSG_NONEG) && value < 0.0) return "Value must be positive.";
    *result = value;
    return nullptr;
  });
}

int acedGetKword(const ACHAR* prompt, ACHAR* buffer, std::size_t bufferSize) {
  if (!buffer || bufferSize == 0) return RTERROR;
  int status = ask(prompt, "Invalid option keyword.", [](std::wstring_view, int) -> const char* { return ""; });
  if (status == RTKWORD) return copyOut(gLastInput, buffer, bufferSize);
  if (status == RTNONE) buffer[0] = L'\0';
  return status;
}

int acedGetKword(const ACHAR* prompt, ACHAR* buffer) { return acedGetKword(prompt, buffer, kAcedInputBufferSize); }

int acedGetInput(ACHAR* buffer, std::size_t bufferSize) { return copyOut(gLastInput, buffer, bufferSize); }

int acedGetInput(ACHAR* buffer) { return acedGetInput(buffer, kAcedInputBufferSize); }
