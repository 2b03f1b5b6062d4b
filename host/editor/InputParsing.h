// Reading what the user typed at a prompt: numbers and coordinates with a decimal point.
#pragma once

#include <string_view>

namespace host::editor {

std::wstring_view trimBlanks(std::wstring_view text);

// A finite number: optional sign, digits, decimal point, exponent. Nothing else may follow.
bool parseReal(std::wstring_view text, double& value);

// "x,y" or "x,y,z"; a missing z is 0 (the drawing's elevation).
bool parsePoint(std::wstring_view text, double point[3]);

}  // namespace host::editor
