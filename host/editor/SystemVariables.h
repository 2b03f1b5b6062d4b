// System variables that acedGetVar reads. Parts of the host that own a value register a reader for it
// (the drawing registers CLAYER, for instance).
#pragma once

#include "sdk/ResultBuffer.h"

#include <functional>
#include <string>

namespace host::editor {

// Fills the result buffer (a string value must be allocated with acutNewString); false if unavailable.
using SystemVariableReader = std::function<bool(resbuf&)>;

void registerSystemVariable(const std::wstring& name, SystemVariableReader reader);

// Helpers for readers.
void setStringValue(resbuf& rb, const std::wstring& value);
void setShortValue(resbuf& rb, short value);

}  // namespace host::editor
