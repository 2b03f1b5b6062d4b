#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "host/WideText.h"
#include "host/headless/TablePdf.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/PrintService.h"
#include "tests/support/ScratchDir.h"
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

class PrintTest : public UiTest {
 protected:
  ScratchDir dir_{"vira-print"};
};

// What the pages hold is checked where the module prints a list (the end-to-end capture tests).
TEST_F(PrintTest, PrintsToTheAnsweredFileAndNothingWhenCancelledOrUnwritable) {
  const ui::PrintTable table = pointTable(3);
  std::wstring error;
  const fs::path pdf = dir_ / "liste.pdf";
  run("@answer print " + pdf.string());
  EXPECT_EQ(transcriptOf([&] { EXPECT_EQ(AfxPrintTable(table, error), ui::PrintResult::Printed); }),
            "[print] \"Punkte erfassen\" -> " + pdf.string() + " (1 page)\n");
  EXPECT_TRUE(fs::remove(pdf));
  EXPECT_FALSE(fs::exists(pdf.string() + ".part"));
  run("@answer print cancel");
  EXPECT_EQ(transcriptOf([&] { EXPECT_EQ(AfxPrintTable(table, error), ui::PrintResult::Cancelled); }),
            "[print] \"Punkte erfassen\" -> cancel\n");
  EXPECT_TRUE(error.empty());

  // A folder that is gone, and a path that is a folder: the print fails with a reason and leaves no file.
  for (const fs::path& target : {dir_ / "weg" / "liste.pdf", fs::path(dir_)}) {
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
}

}  // namespace
}  // namespace uitest
