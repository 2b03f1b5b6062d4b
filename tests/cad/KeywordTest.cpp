// Keyword sets: the prompt's display text, the host's input list and the lookup order.
#include "cad/AcUiKeyword.h"

#include <gtest/gtest.h>

namespace {

TEST(Keyword, DisplayAndInputListTexts) {
  AcUiKeyword none;
  EXPECT_EQ(none.DisplayText(), L"");
  EXPECT_EQ(none.InputList(), L"");
  EXPECT_EQ(none.IndexOf(L""), -1);

  AcUiKeyword three;
  three.Add(L"Abbrechen", L"cancel");
  three.Add(L"Weiter", L"next");
  three.Add(L"Zurück", L"back");
  EXPECT_EQ(three.DisplayText(), L"[Abbrechen/Weiter/Zurück]");
  EXPECT_EQ(three.InputList(), L"Abbrechen Weiter Zurück _ cancel next back ");
}

TEST(Keyword, IndexOfPrefersGlobalNamesAndComparesExactly) {
  AcUiKeyword keywords;
  keywords.Add(L"Nein", L"cancel");  // local 0 spells global 2
  keywords.Add(L"Ja", L"yes");
  keywords.Add(L"Abbrechen", L"Nein");
  EXPECT_EQ(keywords.IndexOf(L"Nein"), 2);
  EXPECT_EQ(keywords.IndexOf(L"cancel"), 0);
  EXPECT_EQ(keywords.IndexOf(L"Ja"), 1);
  EXPECT_EQ(keywords.IndexOf(L"Abbrechen"), 2);
  for (const wchar_t* miss : {L"nein", L"CANCEL", L"Ja ", L"_yes", L""})
    EXPECT_EQ(keywords.IndexOf(miss), -1) << miss;
}

}  // namespace
