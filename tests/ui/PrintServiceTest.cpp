#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/WideText.h"
#include "host/headless/TablePdf.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/PrintService.h"
#include "UiTestDialog.h"

namespace uitest {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

ui::PrintTable pointTable(int rows) {
  ui::PrintTable table;
  table.title = L"Punkte erfassen";
  table.columns = {{L"Name", LVCFMT_LEFT, 66}, {L"X", LVCFMT_RIGHT, 60}, {L"Y", LVCFMT_RIGHT, 60},
                   {L"Z", LVCFMT_RIGHT, 60}};
  for (int r = 0; r < rows; ++r)
    table.rows.push_back({L"Pü" + std::to_wstring(r + 1), std::to_wstring(4500000 + r) + L".125",
                          std::to_wstring(5600000 + r) + L".250", L"98.500"});
  return table;
}

std::string pdfText(const fs::path& pdf) {
  const fs::path text = pdf.string() + ".txt";
  const std::string command = "pdftotext -layout '" + pdf.string() + "' '" + text.string() + "'";
  if (std::system(command.c_str()) != 0) return {};
  std::ifstream in(text);
  std::stringstream all;
  all << in.rdbuf();
  return all.str();
}

class PrintTest : public UiTest {
 protected:
  void SetUp() override {
    UiTest::SetUp();
    dir_ = fs::temp_directory_path() / ("vira-print-" + std::to_string(::getpid()));
    fs::create_directories(dir_);
  }
  void TearDown() override {
    if (std::getenv("VIRA_KEEP_PRINT") == nullptr) fs::remove_all(dir_);
    UiTest::TearDown();
  }
  fs::path dir_;
};

TEST_F(PrintTest, TwoPagesCarryTitleHeaderCellsAndPageNumbers) {
  if (::access("/usr/bin/pdftotext", X_OK) != 0) GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
  const int rows = host::headless::tableRowsPerPage() + 5;
  const ui::PrintTable table = pointTable(rows);
  const fs::path pdf = dir_ / "liste.pdf";
  run("@answer print " + pdf.string());
  std::wstring error;
  ui::PrintResult result = ui::PrintResult::Failed;
  EXPECT_EQ(transcriptOf([&] { result = AfxPrintTable(table, error); }),
            "[print] \"Punkte erfassen\" -> " + pdf.string() + " (2 pages)\n");
  ASSERT_EQ(result, ui::PrintResult::Printed) << host::toUtf8(error);
  EXPECT_FALSE(fs::exists(pdf.string() + ".part"));

  const std::string text = pdfText(pdf);
  // pdftotext separates pages with a form feed.
  const auto pageBreak = text.find('\f');
  ASSERT_NE(pageBreak, std::string::npos) << text;
  const std::string first = text.substr(0, pageBreak);
  const std::string second = text.substr(pageBreak + 1);
  for (const std::string& page : {first, second}) {
    EXPECT_THAT(page, HasSubstr("Punkte erfassen"));
    EXPECT_THAT(page, ::testing::ContainsRegex("Name +X +Y +Z"));
  }
  EXPECT_THAT(first, ::testing::ContainsRegex("Pü1 +4500000.125 +5600000.250 +98.500"));
  EXPECT_THAT(first, ::testing::ContainsRegex("1 ?/ ?2"));
  EXPECT_THAT(second, HasSubstr("Pü" + std::to_string(rows) + " "));
  EXPECT_THAT(second, ::testing::ContainsRegex("2 ?/ ?2"));
  EXPECT_THAT(first, ::testing::Not(HasSubstr("Pü" + std::to_string(rows) + " ")));
}

TEST_F(PrintTest, CancelAndUnwritableTargetsPrintNothing) {
  const ui::PrintTable table = pointTable(3);
  std::wstring error;
  run("@answer print cancel");
  EXPECT_EQ(transcriptOf([&] { EXPECT_EQ(AfxPrintTable(table, error), ui::PrintResult::Cancelled); }),
            "[print] \"Punkte erfassen\" -> cancel\n");
  EXPECT_TRUE(error.empty());

  // A folder that is gone, and a path that is a folder: the print fails with a reason and leaves no file.
  for (const fs::path& target : {dir_ / "weg" / "liste.pdf", dir_}) {
    run("@answer print " + target.string());
    ui::PrintResult result = ui::PrintResult::Printed;
    transcriptOf([&] { result = AfxPrintTable(table, error); });
    EXPECT_EQ(result, ui::PrintResult::Failed) << target;
    EXPECT_THAT(host::toUtf8(error), HasSubstr(target.string()));
  }
  EXPECT_TRUE(fs::is_directory(dir_));
  EXPECT_TRUE(fs::is_empty(dir_));
}

TEST_F(PrintTest, EmptyTableStillPrintsOnePageWithItsHeaderAndTheListViewIsCurrent) {
  EXPECT_EQ(host::headless::tablePageCount(pointTable(0)), 1);
  EXPECT_EQ(host::headless::tablePageCount(pointTable(host::headless::tableRowsPerPage())), 1);
  EXPECT_EQ(host::headless::tablePageCount(pointTable(host::headless::tableRowsPerPage() + 1)), 2);
  EXPECT_EQ(AfxGetCommonControlsVersion(), 6u * 65536u);
}

}  // namespace
}  // namespace uitest
