// A number cell on screen: rounded to the decimals its column has room for, never cut through its whole part.
#include <gtest/gtest.h>

#include "host/ui/CellFit.h"

namespace {

// Six pixels a character, as the headless metric measures.
int sixEach(const std::wstring& text) { return 6 * static_cast<int>(text.size()); }

TEST(CellFit, ANumberTooWideForItsColumnLosesDecimalsRoundedAndKeepsItsWholePart) {
  // A Gauss-Krueger easting with seven decimals in a column of ten characters keeps two, rounded.
  EXPECT_EQ(host::ui::fitDecimals(L"2561210.1250000", 60, sixEach), L"2561210.13");
  EXPECT_EQ(host::ui::fitDecimals(L"2561210.1240000", 60, sixEach), L"2561210.12");
  // The carry runs through nines and the separator into the whole part, after the sign.
  EXPECT_EQ(host::ui::fitDecimals(L"-99.996", 36, sixEach), L"-100.0");
  EXPECT_EQ(host::ui::fitDecimals(L"9.96", 18, sixEach), L"10");
  // A German decimal comma is a separator too.
  EXPECT_EQ(host::ui::fitDecimals(L"5634012,8499", 54, sixEach), L"5634012,8");
  // Too narrow even for the whole part: whole units, for the list to cut like any other text.
  EXPECT_EQ(host::ui::fitDecimals(L"2561210.5", 24, sixEach), L"2561211");
}

TEST(CellFit, TextThatFitsOrIsNoPlainNumberStaysAsItIs) {
  EXPECT_EQ(host::ui::fitDecimals(L"251.2000000", 66, sixEach), L"251.2000000");
  for (const wchar_t* text : {L"P12", L"1.5e3", L"12.", L".5", L"-", L"1.2.3", L"", L"2561210"})
    EXPECT_EQ(host::ui::fitDecimals(text, 6, sixEach), text) << text;
}

}  // namespace
