// Status names: the table against the host's list, and the two different texts for unknown codes.
#include "cad/AcDbErrorReport.h"
#include "cad/AcDbStatusNames.h"
#include "tests/hostrt/HostTestSupport.h"
#include "tests/support/ReadFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

TEST(StatusNames, TableHoldsEveryDeclaredCodeInOrderWithTheInternetRemarks) {
  ASSERT_EQ(kAcDbStatusNameCount, 333u);
  for (std::size_t i = 0; i < kAcDbStatusNameCount; ++i) {
    EXPECT_EQ(std::wstring(kAcDbStatusNames[i].name).rfind(L"Acad::e", 0), 0u) << i;
    if (i > 0) {
      EXPECT_LT(kAcDbStatusNames[i - 1].code, kAcDbStatusNames[i].code) << i;
    }
  }
  EXPECT_STREQ(AcDbErrorName(Acad::eOk), L"Acad::eOk");
  EXPECT_STREQ(AcDbErrorName(Acad::eInetInCache), L"Acad::eInetInCache\t\t\t\tfile already downloaded");
  EXPECT_STREQ(AcDbErrorName(Acad::eInetHttpBadRequest),
               L"Acad::eInetHttpBadRequest\tHTTP_STATUS_BAD_REQUEST 400 - invalid syntax");
  // Gaps in the host's numbering, and codes beyond both ends.
  for (int code : {19, 78, 79, 107, 108, 109, 433, 19999, 20053, -1})
    EXPECT_STREQ(AcDbErrorName(code), L"Unknown Error") << code;
}

TEST(StatusNames, GeneratedTableIsUpToDateWithTheHostsList) {
  std::filesystem::path source = std::filesystem::path(VIRA_SOURCE_DIR) / "cad";
  std::filesystem::path fresh = std::filesystem::path(VIRA_BINARY_DIR) / "cad-status-names-check.cpp";
  std::string command = std::string(VIRA_PYTHON) + " '" + (source / "make_status_names.py").string() + "' '" +
                        (source / "host-status-names.txt").string() + "' '" + fresh.string() + "'";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  EXPECT_EQ(readFile(fresh), readFile(source / "AcDbStatusNames.cpp"))
      << "run cad/make_status_names.py after changing cad/host-status-names.txt";
  std::filesystem::remove(fresh);
}

TEST(ReportError, PrintsFailuresAndRequestedSuccessesAndPassesTheStatusThrough) {
  hosttest::TranscriptCapture transcript;
  EXPECT_EQ(AcDbReportError(Acad::eOk, L"Open"), Acad::eOk);
  EXPECT_EQ(AcDbReportError(Acad::eOk, nullptr, false), Acad::eOk);
  EXPECT_EQ(transcript.text(), "") << "a success is quiet unless asked for";

  EXPECT_EQ(AcDbReportError(Acad::eOk, L"Open", true), Acad::eOk);
  EXPECT_EQ(AcDbReportError(Acad::eWasOpenForWrite, L"Layer"), Acad::eWasOpenForWrite);
  EXPECT_EQ(AcDbReportError(static_cast<Acad::ErrorStatus>(19)), 19);
  EXPECT_EQ(AcDbReportError(Acad::eInetInCache, L"Download"), Acad::eInetInCache);
  EXPECT_EQ(transcript.text(),
            "AutoCAD ERROR: 0 - Acad::eOk : Open\n"
            "AutoCAD ERROR: 83 - Acad::eWasOpenForWrite : Layer\n"
            "AutoCAD ERROR: 19 - Unknown Acad Error\n"
            "AutoCAD ERROR: 20001 - Acad::eInetInCache\t\t\t\tfile already downloaded : Download\n");
}

}  // namespace
