// How a number cell fits its column on screen. A list chooses the decimals of a coordinate from the column's
// width in characters, which leaves no room for the whole-number part: a Gauss-Krueger easting with seven
// digits before the point would be cut off at its end ("2561210.0..."), and the surveyor could not read it. A
// window shows such a number rounded to the decimals its column has room for instead, so that the whole
// number is always readable and a wider column shows more decimals. Only the picture changes: exports,
// printing and the cell text the module wrote keep every decimal.
#pragma once

#include <functional>
#include <string>

namespace host::ui {

// `text` as it fits `room` pixels when `widthOf` measures it: unchanged when it fits or is no plain decimal
// number (an optional sign, digits, a point or comma, digits); otherwise rounded half up to the most decimals
// that fit, down to none. A number whose whole part does not fit either is returned rounded to whole units,
// for the list to cut as it cuts any text.
std::wstring fitDecimals(const std::wstring& text, int room, const std::function<int(const std::wstring&)>& widthOf);

}  // namespace host::ui
