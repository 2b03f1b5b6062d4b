#include "HostTestSupport.h"
#include "host/editor/InputParsing.h"
#include "host/editor/Keywords.h"
#include "sdk/AcApDocManager.h"
#include "sdk/AcDebug.h"
#include "sdk/AcEd.h"
#include "sdk/AcFrame.h"
#include "sdk/ui/CWnd.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using hosttest::ScriptedUser;
using hosttest::TranscriptCapture;
using ::testing::ElementsAre;

std::wstring lastInput() {
  ACHAR buffer[kAcedInputBufferSize];
  EXPECT_EQ(acedGetInput(buffer), RTNORM);
  return buffer;
}

TEST(Keywords, MatchByLocalOrGlobalNameWithOrWithoutUnderscoreIgnoringCase) {
  auto keywords = host::editor::parseKeywordList(L"Abbrechen Weiter _ cancel next");
  ASSERT_EQ(keywords.size(), 2u);
  for (const wchar_t* typed : {L"cancel", L"CANCEL", L"_cancel", L"abbrechen", L"_ABBRECHEN", L"Abbrechen"}) {
    const auto* k = host::editor::matchKeyword(keywords, typed);
    ASSERT_NE(k, nullptr) << typed;
    EXPECT_EQ(k->global, L"cancel");
  }
  for (const wchar_t* typed : {L"", L"_", L"cance", L"cancel2", L"__cancel", L"Abbrechen Weiter"})
    EXPECT_EQ(host::editor::matchKeyword(keywords, typed), nullptr) << typed;

  // A global name wins over another keyword's local name of the same spelling.
  auto crossed = host::editor::parseKeywordList(L"Ja Nein _ Nein Yes");
  EXPECT_EQ(host::editor::matchKeyword(crossed, L"nein")->global, L"Nein");
  EXPECT_EQ(host::editor::matchKeyword(crossed, L"ja")->global, L"Nein");

  // Without a global part each keyword is its own global name; extra blanks do not count.
  auto plain = host::editor::parseKeywordList(L"  Ja   Nein ");
  ASSERT_EQ(plain.size(), 2u);
  EXPECT_EQ(plain[1].global, L"Nein");
}

TEST(InputParsing, PointsAndNumbersRefuseGarbage) {
  double p[3] = {9, 9, 9};
  ASSERT_TRUE(host::editor::parsePoint(L"2561210,5634010.25", p));
  EXPECT_THAT(p, ElementsAre(2561210.0, 5634010.25, 0.0));
  ASSERT_TRUE(host::editor::parsePoint(L" -1.5e2 , +3 ,0.125 ", p));
  EXPECT_THAT(p, ElementsAre(-150.0, 3.0, 0.125));
  for (const wchar_t* bad : {L"", L"1", L"1,", L",2", L"1,2,3,4", L"1;2", L"1 2", L"nan,1", L"inf,2",
                             L"1e999,0", L"0x10,1", L"1,2x", L"1.2.3,4"})
    EXPECT_FALSE(host::editor::parsePoint(bad, p)) << bad;
  double v = 0;
  EXPECT_TRUE(host::editor::parseReal(L"-0.5", v));
  EXPECT_EQ(v, -0.5);
  EXPECT_FALSE(host::editor::parseReal(L"1,5", v));
}

TEST(GetPoint, PointsKeywordsEnterEscapeAndRepromptOnJunk) {
  TranscriptCapture transcript;
  ScriptedUser user;
  user.type(L"10,20").type(L"1,2,3").type(L"junk").type(L"_CANCEL").enter().escape().type(L"cancel");
  ads_point p{};

  acedInitGet(0, L"Abbrechen _ cancel");
  ASSERT_EQ(acedGetPoint(nullptr, L"\nPunkt [Abbrechen]", p), RTNORM);
  EXPECT_THAT(p, ElementsAre(10.0, 20.0, 0.0));
  acedInitGet(0, L"Abbrechen _ cancel");
  ASSERT_EQ(acedGetPoint(nullptr, L"\nPunkt [Abbrechen]", p), RTNORM);
  EXPECT_THAT(p, ElementsAre(1.0, 2.0, 3.0));
  // Junk is refused and asked again; the keyword that follows answers the same prompt.
  acedInitGet(0, L"Abbrechen _ cancel");
  ASSERT_EQ(acedGetPoint(nullptr, L"\nPunkt [Abbrechen]", p), RTKWORD);
  EXPECT_EQ(lastInput(), L"cancel");
  EXPECT_THAT(p, ElementsAre(1.0, 2.0, 3.0)) << "a keyword leaves the point alone";
  EXPECT_EQ(acedGetPoint(nullptr, L"\nPunkt", p), RTNONE);
  EXPECT_EQ(acedGetPoint(nullptr, L"\nPunkt", p), RTCAN);
  // Keywords are armed for one prompt only.
  EXPECT_EQ(acedGetPoint(nullptr, L"\nPunkt", p), RTCAN) << "the script ends: cancelled as by Escape";

  EXPECT_EQ(transcript.text(),
            "Punkt [Abbrechen]: 10,20\n"
            "Punkt [Abbrechen]: 1,2,3\n"
            "Punkt [Abbrechen]: junk\n"
            "Point or option keyword required.\n"
            "Punkt [Abbrechen]: _CANCEL\n"
            "Punkt: \n"
            "Punkt: *Cancel*\n"
            "Punkt: cancel\n"
            "Invalid point.\n"
            "Punkt: *Cancel*\n");
}

TEST(GetPoint, QueuedInputFromADialogEndsTheRunningPrompt) {
  ScriptedUser user;
  TranscriptCapture transcript;
  // The user presses a dialog button while the prompt waits; the button queues the keyword.
  user.act([] { acDocManager->sendStringToExecute(acDocManager->curDocument(), L"cancel\n"); });
  ads_point p{};
  acedInitGet(0, L"Abbrechen _ cancel");
  EXPECT_EQ(acedGetPoint(nullptr, L"\nPunkt [Abbrechen]", p), RTKWORD);
  EXPECT_EQ(lastInput(), L"cancel");

  // Escape characters cancel; "\r\n" ends one line, not two; a piece without line end waits for the rest.
  acDocManager->sendStringToExecute(nullptr, L"\x1b" L"5,6\r\n7,");
  acDocManager->sendStringToExecute(nullptr, L"8\n");
  EXPECT_EQ(acedGetPoint(nullptr, L"P", p), RTCAN);
  EXPECT_EQ(acedGetPoint(nullptr, L"P", p), RTNORM);
  EXPECT_THAT(p, ElementsAre(5.0, 6.0, 0.0));
  EXPECT_EQ(acedGetPoint(nullptr, L"P", p), RTNORM);
  EXPECT_THAT(p, ElementsAre(7.0, 8.0, 0.0));
  EXPECT_EQ(acedGetPoint(nullptr, L"P", p), RTCAN);

  // A toolbar button cancels the running prompt by sending Escape to the command-line window.
  user.act([] { acedGetAcadTextCmdLine()->OnChar(27); });
  EXPECT_EQ(acedGetPoint(nullptr, L"P", p), RTCAN);
}

TEST(GetRealAndKword, FlagsAndAnswers) {
  TranscriptCapture transcript;
  ScriptedUser user;
  user.enter().type(L"0").type(L"-2").type(L"2.5").type(L"x").type(L"_next").type(L"Freitext");
  double v = 0;
  acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
  ASSERT_EQ(acedGetReal(L"Faktor", &v), RTNORM);
  EXPECT_EQ(v, 2.5);
  ACHAR kw[kAcedInputBufferSize];
  acedInitGet(0, L"Weiter _ next");
  ASSERT_EQ(acedGetKword(L"Option [Weiter]", kw), RTNORM);
  EXPECT_EQ(std::wstring(kw), L"next");
  acedInitGet(RSG_OTHER, L"Weiter _ next");
  ASSERT_EQ(acedGetReal(L"Wert", &v), RTKWORD);
  EXPECT_EQ(lastInput(), L"Freitext");
  EXPECT_EQ(transcript.text(),
            "Faktor: \nRequires numeric value.\n"
            "Faktor: 0\nValue must be nonzero.\n"
            "Faktor: -2\nValue must be positive.\n"
            "Faktor: 2.5\n"
            "Option [Weiter]: x\nInvalid option keyword.\n"
            "Option [Weiter]: _next\n"
            "Wert: Freitext\n");
}

TEST(Printf, WideFormatsOfTheModulesHomePlatform) {
  TranscriptCapture transcript;
  int n = acutPrintf(L"%s|%5.2f|%d%%|%I64d|%c|%hs|%S|%ls\n", L"Maßstab", 3.14159, 7, 1LL << 40, L'ü', "eng",
                     "lisch", L"wide");
  EXPECT_EQ(transcript.text(), "Maßstab| 3.14|7%|1099511627776|ü|eng|lisch|wide\n");
  EXPECT_EQ(n, 48);
  transcript.clear();
  // Narrow arguments are UTF-8 even in the "C" locale this test runs in.
  acutPrintf(L"%hs|%S", "Maß", "Größe");
  EXPECT_EQ(transcript.text(), "Maß|Größe");
  transcript.clear();
  acutPrintf(L"\nAutoCAD ERROR: %d - %s : %s\n", 87, L"eOnLockedLayer", L"ctx");
  acedAlert(L"Zeile 1\nZeile 2");
  // Trace lines are for developers: never in the transcript.
  OutputDebugStringA("CalcTrafo 2\n");
  EXPECT_EQ(transcript.text(), "\nAutoCAD ERROR: 87 - eOnLockedLayer : ctx\n[alert] \"Zeile 1\\nZeile 2\"\n");
}

TEST(SystemServices, ResultBuffersVariablesAndCoordinateSystems) {
  resbuf rb;
  ASSERT_EQ(acedGetVar(L"cmdactive", &rb), RTNORM);
  EXPECT_EQ(rb.restype, RTSHORT);
  EXPECT_EQ(rb.resval.rint, 0);
  ASSERT_EQ(acedGetVar(L"DWGNAME", &rb), RTNORM);
  ASSERT_EQ(rb.restype, RTSTR);
  acutDelString(rb.resval.rstring);
  EXPECT_EQ(rb.resval.rstring, nullptr);
  EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &rb), RTERROR);

  ads_point in = {1, 2, 3}, out = {};
  resbuf wcs, ucs, bad;
  wcs.restype = ucs.restype = bad.restype = RTSHORT;
  wcs.resval.rint = 0;
  ucs.resval.rint = 1;
  bad.resval.rint = 7;
  ASSERT_EQ(acedTrans(in, &ucs, &wcs, 0, out), RTNORM);
  EXPECT_EQ(out[2], 3.0);
  EXPECT_EQ(acedTrans(in, &bad, &wcs, 0, out), RTREJ);

  // Document locks nest; an unlock too many is refused and leaves the document unlocked.
  AcApDocument* doc = acDocManager->curDocument();
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kXWrite), Acad::eOk);
  EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kWrite), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kXWrite);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
  EXPECT_EQ(doc->myLockMode(), AcAp::kNotLocked);
  EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eNotApplicable);
}

}  // namespace
