// The point prompt driven through the host's real editor: the user (a scripted input source) picks points,
// types keywords by either name, presses Escape or Enter; the transcript shows what the user saw.
#include "cad/AcUiKeyword.h"
#include "cad/AcUiPromptPoint.h"
#include "tests/hostrt/HostTestSupport.h"

#include <gtest/gtest.h>

namespace {

using hosttest::ScriptedUser;
using hosttest::TranscriptCapture;

AcUiKeyword captureKeywords() {
  AcUiKeyword keywords;
  keywords.Add(L"Abbrechen", L"cancel");
  keywords.Add(L"Weiter", L"next");
  return keywords;
}

TEST(PromptPoint, PointsKeywordsEscapeAndEnterThroughTheHostEditor) {
  TranscriptCapture transcript;
  ScriptedUser user;
  user.type(L"2561210.125,5634010.5,101.25").type(L"weiter").type(L"_cancel").escape().enter();
  AcUiKeyword keywords = captureKeywords();
  AcUiPromptPoint prompt;
  EXPECT_EQ(prompt.ChosenKeyword(), 0);

  ASSERT_EQ(prompt.GetPoint(L"\nPunkt", nullptr, &keywords), RTNORM);
  EXPECT_EQ(prompt.Point(), AcGePoint3d(2561210.125, 5634010.5, 101.25));
  KoPoint picked = prompt.PointAsKoPoint();
  EXPECT_EQ(picked.x, 2561210.125);
  EXPECT_EQ(picked.z, 101.25);

  // The local name typed in any case, and the global name with its underscore, both answer by index.
  EXPECT_EQ(prompt.GetPoint(L"\nPunkt", nullptr, &keywords), RTKWORD);
  EXPECT_EQ(prompt.ChosenKeyword(), 1);
  EXPECT_EQ(prompt.GetPoint(L"\nPunkt", nullptr, &keywords), RTKWORD);
  EXPECT_EQ(prompt.ChosenKeyword(), 0);

  EXPECT_EQ(prompt.GetPoint(L"\nPunkt", nullptr, &keywords), RTCAN);
  EXPECT_EQ(prompt.GetPoint(L"\nPunkt", nullptr, &keywords), RTNONE) << "Enter is the caller's to judge";
  EXPECT_EQ(prompt.ChosenKeyword(), 0) << "only a keyword answer changes the choice";
  EXPECT_EQ(prompt.Point(), AcGePoint3d(2561210.125, 5634010.5, 101.25)) << "no new point, old one kept";

  EXPECT_EQ(transcript.text(),
            "Punkt [Abbrechen/Weiter]: 2561210.125,5634010.5,101.25\n"
            "Punkt [Abbrechen/Weiter]: weiter\n"
            "Punkt [Abbrechen/Weiter]: _cancel\n"
            "Punkt [Abbrechen/Weiter]: *Cancel*\n"
            "Punkt [Abbrechen/Weiter]: \n");
}

TEST(PromptPoint, WithoutKeywordsTheMessageStandsAloneAndNoKeywordIsArmed) {
  TranscriptCapture transcript;
  ScriptedUser user;
  // A keyword armed by an earlier prompt must not leak into this one: "cancel" is refused as a point.
  user.type(L"cancel").type(L"3,4");
  AcUiPromptPoint prompt;
  AcGePoint3d base(1, 1, 0);
  ASSERT_EQ(prompt.GetPoint(L"\nZeichnungspunkt", &base), RTNORM);
  EXPECT_EQ(prompt.Point(), AcGePoint3d(3, 4, 0));
  EXPECT_EQ(transcript.text(),
            "Zeichnungspunkt: cancel\n"
            "Invalid point.\n"
            "Zeichnungspunkt: 3,4\n");
}

}  // namespace
