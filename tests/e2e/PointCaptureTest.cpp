// ViraPtPick from the surveyor's side: clicks in, named rows in the capture dialog, files out for the
// spreadsheet and for other survey software, and a drawing that stays as it was.
#include <locale.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <regex>
#include <thread>

#include "../support/ScopedEnv.h"
#include "CadhostRun.h"

namespace e2e {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string kFileDialog = "[file save] \"Excel (*.csv)|*.csv|Text (*.txt)|*.txt||\" -> ";

class PointCaptureTest : public CadhostTest {
 protected:
  void SetUp() override {
    CadhostTest::SetUp();
    tmp_.emplace("TMP", dir_.string());
    locale_.emplace("LC_ALL", "C");
  }
  void TearDown() override {
    locale_.reset();
    tmp_.reset();
    CadhostTest::TearDown();
  }
  std::string file(const std::string& name) const { return (dir_ / name).string(); }
  // The last dump of the capture dialog's list: header and rows.
  static std::string listOf(const std::string& transcript) {
    const std::size_t at = transcript.rfind("4000 list \"\"\n");
    if (at == std::string::npos) return {};
    const std::size_t end = transcript.find("-1 static", at);
    return transcript.substr(at + 13, end - at - 13);
  }
  void writeSetting(const std::string& text) {
    fs::create_directories(configHome() / "TRELLANOVA 10");
    std::ofstream(configHome() / "TRELLANOVA 10" / "registry.ini") << text;
  }

  std::optional<ScopedEnv> tmp_, locale_;
};

TEST_F(PointCaptureTest, ClicksBecomeNamedRowsSavedAsCsvAndText) {
  HostRun run = cadhost("_ViraPtPick\n@dialog 4001 set 4001 P1\n4500000.125,5600000.25,98.5\n-1.5,2,0\n10,20\n"
                        "@dialog 4001 dump\n@answer file " + file("punkte.csv") + "\n@dialog 4001 click 4002\n"
                        "@answer file " + file("punkte.TXT") + "\n@dialog 4001 click 4002\n"
                        "# renaming a saved point in place makes OK save again\n"
                        "@dialog 4001 select 4000 1\n@dialog 4001 key 4000 F2\n@dialog 4001 set 32513 Nord 2\n"
                        "@dialog 4001 key 32513 Return\n@answer file " + file("neu.csv") + "\n@dialog 4001 click 1\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Command: _ViraPtPick\n"
            "Punkt [Abbrechen]: 4500000.125,5600000.25,98.5\n"
            "Punkt [Abbrechen]: -1.5,2,0\n"
            "Punkt [Abbrechen]: 10,20\n"
            "dialog 4001 \"Punkte erfassen\"\n"
            "4000 list \"\"\n"
            "  header \"Name\" \"X\" \"Y\" \"Z\"\n"
            "  row 0 \"P1\" \"4500000.1250000\" \"5600000.2500000\" \"98.5000000\"\n"
            "  row 1 \"P2\" \"-1.5000000\" \"2.0000000\" \"0.0000000\"\n"
            "  row 2 \"P3\" \"10.0000000\" \"20.0000000\" \"0.0000000\"\n"
            "-1 static \"Nächste Punktnummer:\"\n"
            "4001 edit \"P4\"\n"
            "4004 updown \"\" position 0\n"
            "4002 button \"Speichern als...\"\n"
            "1 button \"OK\"\n" +
                kFileDialog + file("punkte.csv") + "\n" + kFileDialog + file("punkte.TXT") +
                "\n" + kFileDialog + file("neu.csv") + "\nPunkt [Abbrechen]: cancel\n");
  EXPECT_EQ(slurp(file("neu.csv")),
            "P1,4500000.1250000,5600000.2500000,98.5000000,\nNord 2,-1.5000000,2.0000000,0.0000000,\n"
            "P3,10.0000000,20.0000000,0.0000000,\n");
  EXPECT_EQ(slurp(file("punkte.csv")),
            "P1,4500000.1250000,5600000.2500000,98.5000000,\nP2,-1.5000000,2.0000000,0.0000000,\n"
            "P3,10.0000000,20.0000000,0.0000000,\n");
  EXPECT_EQ(slurp(file("punkte.TXT")),
            "Name X Y Z \nP1 4500000.1250000 5600000.2500000 98.5000000 \nP2 -1.5000000 2.0000000 0.0000000 \n"
            "P3 10.0000000 20.0000000 0.0000000 \n");
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
}

TEST_F(PointCaptureTest, DecimalCommaLocaleWritesSemicolonsAndCommas) {
  locale_t german = ::newlocale(LC_ALL_MASK, "de_DE.UTF-8", static_cast<locale_t>(nullptr));
  if (german == static_cast<locale_t>(nullptr))
    GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed (scripts/install-deps.sh generates it)";
  ::freelocale(german);
  locale_.reset();
  locale_.emplace("LC_ALL", "de_DE.UTF-8");
  HostRun run = cadhost("_ViraPtPick\n4500000.125,5600000.25,98.5\n-1.5,2,0\n@dialog 4001 dump\n"
                        "@answer file " + file("punkte.dat") + "\n@dialog 4001 click 4002\n"
                        "@answer file " + file("punkte.txt") + "\n@dialog 4001 click 4002\n@dialog 4001 click 1\n");
  ASSERT_EQ(run.status, 0) << run.err;
  // The dialog shows points as always; the files carry the decimal mark the user's spreadsheet reads.
  EXPECT_THAT(run.out, HasSubstr("row 0 \"1\" \"4500000.1250000\" \"5600000.2500000\" \"98.5000000\"\n"));
  EXPECT_EQ(slurp(file("punkte.dat")), "1;4500000,1250000;5600000,2500000;98,5000000;\n2;-1,5000000;2,0000000;0,0000000;\n");
  EXPECT_EQ(slurp(file("punkte.txt")),
            "Name X Y Z \n1 4500000,1250000 5600000,2500000 98,5000000 \n2 -1,5000000 2,0000000 0,0000000 \n");
}

TEST_F(PointCaptureTest, NumberingSchemesAndTheUpDownArrows) {
  HostRun run = cadhost("_ViraPtPick\n@dialog 4001 set 4001 009\n1,1\n2,2\n@dialog 4001 updown 4004 down\n"
                        "@dialog 4001 updown 4004 down\n3,3\n@dialog 4001 set 4001 A9\n@dialog 4001 updown 4004 up\n"
                        "4,4\n@dialog 4001 set 4001 B\n5,5\n@dialog 4001 set 4001 P000\n"
                        "@dialog 4001 updown 4004 down\n6,6\n@dialog 4001 set 4001 \u20ac\u20ac\n7,7\n"
                        "@dialog 4001 set 4001 Gauß-Krüger7\n8,8\n@dialog 4001 dump\n@esc\n");
  ASSERT_EQ(run.status, 0) << run.err;
  // A name all of three-byte characters does not fit the narrow conversion and stays empty.
  EXPECT_EQ(listOf(run.out),
            "  header \"Name\" \"X\" \"Y\" \"Z\"\n"
            "  row 0 \"009\" \"1.0000000\" \"1.0000000\" \"0.0000000\"\n"
            "  row 1 \"010\" \"2.0000000\" \"2.0000000\" \"0.0000000\"\n"
            "  row 2 \"009\" \"3.0000000\" \"3.0000000\" \"0.0000000\"\n"
            "  row 3 \"A10\" \"4.0000000\" \"4.0000000\" \"0.0000000\"\n"
            "  row 4 \"B\" \"5.0000000\" \"5.0000000\" \"0.0000000\"\n"
            "  row 5 \"P000\" \"6.0000000\" \"6.0000000\" \"0.0000000\"\n"
            "  row 6 \"\" \"7.0000000\" \"7.0000000\" \"0.0000000\"\n"
            "  row 7 \"Gauß-Krüger7\" \"8.0000000\" \"8.0000000\" \"0.0000000\"\n");
  EXPECT_THAT(run.out, HasSubstr("4001 edit \"Gauß-Krüger8\"\n"));
  // Escape at the prompt closes the dialog without offering to save.
  EXPECT_THAT(run.out, HasSubstr("Punkt [Abbrechen]: *Cancel*\n"));
  EXPECT_THAT(run.out, Not(HasSubstr("[file save]")));
}

TEST_F(PointCaptureTest, SortByHeaderAndMenuDeleteAskingAndFitTheColumns) {
  HostRun run = cadhost(
      "_ViraPtPick\n@dialog 4001 set 4001 P1\n3,30,300\n1,10,100\n2,20,200\n"
      "@dialog 4001 header 4000 1\n@dialog 4001 dump\n@dialog 4001 header 4000 1\n@dialog 4001 dump\n"
      "@dialog 4001 header 4000 1\n@dialog 4001 menu 4000 0 3 4\n@dialog 4001 dump\n"
      "@dialog 4001 select 4000 0 2\n@answer message no\n@dialog 4001 key 4000 Delete\n@dialog 4001 dump\n"
      "@answer message yes\n@dialog 4001 menu 4000 0 0 7\n@dialog 4001 dump\n"
      "# O shares the free width of the list among the columns: the coordinates get more decimals\n"
      "@dialog 4001 key 4000 O\n@dialog 4001 dump\n@dialog 4001 click 1\n"
      "@answer file cancel\n");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string rows = "  header \"Name\" \"X\" \"Y\" \"Z\" sorted ";
  EXPECT_THAT(run.out, HasSubstr(rows + "1 ascending\n  row 0 \"P2\" \"1.0000000\""));
  EXPECT_THAT(run.out, HasSubstr(rows + "1 descending\n  row 0 \"P1\" \"3.0000000\""));
  EXPECT_THAT(run.out, HasSubstr(rows + "3 descending\n  row 0 \"P1\" \"3.0000000\" \"30.0000000\" "
                                        "\"300.0000000\"\n  row 1 \"P3\""));
  EXPECT_THAT(run.out, HasSubstr("[message] \"Selektierte Daten löschen?\" (yes/no) -> no\n"));
  EXPECT_THAT(run.out, HasSubstr("[message] \"Selektierte Daten löschen?\" (yes/no) -> yes\n"));
  const std::size_t no = run.out.find("-> no\n");
  EXPECT_THAT(run.out.substr(no), HasSubstr("  row 0 \"P1\" \"3.0000000\" \"30.0000000\" \"300.0000000\" selected\n"
                                            "  row 1 \"P3\" \"2.0000000\" \"20.0000000\" \"200.0000000\"\n"
                                            "  row 2 \"P2\" \"1.0000000\" \"10.0000000\" \"100.0000000\" selected\n"));
  // After deleting, the rows are in capture order again; 86 pixels wide, the coordinates show 11 decimals.
  EXPECT_EQ(listOf(run.out),
            "  header \"Name\" \"X\" \"Y\" \"Z\" sorted 3 descending\n"
            "  row 0 \"P3\" \"2.00000000000\" \"20.00000000000\" \"200.00000000000\"\n");
  EXPECT_THAT(run.out, HasSubstr(kFileDialog + "cancel\nPunkt [Abbrechen]: cancel\n"));
}

TEST_F(PointCaptureTest, ListsSpeakTheUsersLanguage) {
  const std::string script = "_ViraPtPick\n1,1\n2,2\n@dialog 4001 select 4000 1\n@answer message yes\n"
                             "@dialog 4001 menu 4000 1 0 7\n@dialog 4001 dump\n@esc\n";
  HostRun run = cadhost(script);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("[menu] \"Spalte aufsteigend sortieren\" \"Spalte absteigend sortieren\" "
                                 "\"Microsoft Excel...\" \"Drucken\" \"Löschen\" -> \"Löschen\"\n"
                                 "[message] \"Selektierte Daten löschen?\" (yes/no) -> yes\n"));
  setLanguage("ENG");
  run = cadhost(script);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("[menu] \"Sort Column ascending\" \"Sort Column descending\" "
                                 "\"Microsoft Excel...\" \"Print\" \"Delete\" -> \"Delete\"\n"
                                 "[message] \"Delete Selected Data?\" (yes/no) -> yes\n"));
  EXPECT_THAT(listOf(run.out), HasSubstr("row 0 \"1\""));
  EXPECT_THAT(listOf(run.out), Not(HasSubstr("row 1")));
}

TEST_F(PointCaptureTest, EveryWayOutEndsTheCaptureOnce) {
  HostRun run = cadhost("_ViraPtPick\n1,1\n@dialog 4001 key 4000 Escape\n"  // Cancel: unsaved points are dropped
                        "_ViraPtPick\n@dialog 4001 dump\n2,2\nAbbrechen\n"
                        "_ViraPtPick\n3,3\ncancel\n"
                        "_ViraPtPick\n4,4\n\n"
                        "_ViraPtPick\n5,5\n@answer file cancel\n@dialog 4001 click 1\n"  // OK offers to save
                        "_ViraPtPick\n6,6\n@answer file " + file("p.csv") + "\n@dialog 4001 click 4002\n"
                        "@dialog 4001 click 1\n"  // saved already: no question
                        "_ViraPtPick\n@dialog 4001 click 1\n");  // nothing to save: no question
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.substr(run.out.find("Punkt [Abbrechen]: 2,2")),
            "Punkt [Abbrechen]: 2,2\nPunkt [Abbrechen]: Abbrechen\n"
            "Command: _ViraPtPick\nPunkt [Abbrechen]: 3,3\nPunkt [Abbrechen]: cancel\n"
            "Command: _ViraPtPick\nPunkt [Abbrechen]: 4,4\nPunkt [Abbrechen]: \n"
            "Command: _ViraPtPick\nPunkt [Abbrechen]: 5,5\n" + kFileDialog + "cancel\nPunkt [Abbrechen]: cancel\n"
            "Command: _ViraPtPick\nPunkt [Abbrechen]: 6,6\n" + kFileDialog + file("p.csv") +
                "\nPunkt [Abbrechen]: cancel\n"
                "Command: _ViraPtPick\nPunkt [Abbrechen]: cancel\n");
  // A new dialog starts at 1 with an empty list.
  EXPECT_THAT(run.out, HasSubstr("4000 list \"\"\n  header \"Name\" \"X\" \"Y\" \"Z\"\n-1 static"));
  EXPECT_THAT(run.out, HasSubstr("4001 edit \"1\"\n"));
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
}

TEST_F(PointCaptureTest, UnwritableTargetsKeepTheListUnsavedAndTheDrawingUntouched) {
  fs::create_directories(dir_ / "nur-lesen");
  fs::permissions(dir_ / "nur-lesen", fs::perms::owner_read | fs::perms::owner_exec);
  std::string script = "_ViraPtPick\n1,2,3\n";
  fs::create_directories(dir_ / "ordner.csv");
  std::vector<std::string> targets = {file("weg/punkte.csv"), file("ordner.csv"), "/proc/vira-punkte.txt"};
  if (::geteuid() != 0) targets.push_back(file("nur-lesen/punkte.csv"));  // root writes there anyway
  for (const std::string& target : targets) script += "@answer file " + target + "\n@dialog 4001 click 4002\n";
  script += "@dialog 4001 dump\n@answer file " + file("ok.csv") + "\n@dialog 4001 click 1\n";
  HostRun run = cadhost(script);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("  row 0 \"1\" \"1.0000000\" \"2.0000000\" \"3.0000000\"\n"));
  // The points stayed unsaved, so OK still asked for a file, and that one was written.
  EXPECT_THAT(run.out, HasSubstr(kFileDialog + file("ok.csv") + "\nPunkt [Abbrechen]: cancel\n"));
  EXPECT_EQ(slurp(file("ok.csv")), "1,1.0000000,2.0000000,3.0000000,\n");
  EXPECT_FALSE(fs::exists(dir_ / "weg"));
  EXPECT_TRUE(fs::is_empty(dir_ / "nur-lesen"));
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
  fs::permissions(dir_ / "nur-lesen", fs::perms::owner_all);
}

TEST_F(PointCaptureTest, CaptureThenTransformationInOneRun) {
  HostRun run = cadhost("_ViraPtPick\n2561210,5634010,251.2\n@answer file " + file("p.csv") +
                        "\n@dialog 4001 click 1\n" + slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "one-pair.txt"));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(slurp(file("p.csv")), "1,2561210.0000000,5634010.0000000,251.2000000,\n");
  EXPECT_THAT(run.out, HasSubstr("\n14 Zeichenelemente transformiert\n"));
  EXPECT_EQ(checkDrawing({1, 0, 0, 561010.412 - 2561210, 0, 1, 0, 5632158.733 - 5634010, 0, 0, 1, 251.327 - 251.2, 0,
                          0, 0, 1}),
            "mapped 14 kept 4");
}

TEST_F(PointCaptureTest, SpreadsheetGetsTheExportOrOneLineSaysWhyNot) {
  const fs::path opened = dir_ / "geoeffnet";
  fs::create_directories(opened);
  writeSetting("[Platform]\nSpreadsheet=/bin/cp --target-directory=" + opened.string() + "\n");
  HostRun run = cadhost("_ViraPtPick\n1.25,2,3\n@dialog 4001 menu 4000 0 1 5\n@esc\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(slurp(dir_ / "Viracadtools.csv"), "Name,X,Y,Z,\n1,1.2500000,2.0000000,3.0000000,\n");
  // The program runs on its own; give it a moment to copy the file it was handed.
  for (int i = 0; i < 100 && !fs::exists(opened / "Viracadtools.csv"); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(slurp(opened / "Viracadtools.csv"), "Name,X,Y,Z,\n1,1.2500000,2.0000000,3.0000000,\n");

  writeSetting("[Platform]\nSpreadsheet=kein-solches-programm --calc\n");
  run = cadhost("_ViraPtPick\n1.25,2,3\n@dialog 4001 menu 4000 0 1 5\n@dialog 4001 dump\n@esc\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, ::testing::ContainsRegex("\nDas Programm \"kein-solches-programm\" kann nicht gestartet "
                                                "werden: [^\n]+\ndialog 4001"));
}

TEST_F(PointCaptureTest, PrintedListCarriesHeaderCellsAndPageNumbers) {
  if (::access("/usr/bin/pdftotext", X_OK) != 0) GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
  std::string script = "_ViraPtPick\n@dialog 4001 set 4001 MP1\n";
  for (int k = 1; k <= 60; ++k) script += std::to_string(4500000 + k) + ".5," + std::to_string(5600000 + k) + ",99\n";
  script += "@answer print " + file("liste.pdf") + "\n@dialog 4001 menu 4000 0 0 6\n@esc\n";
  HostRun run = cadhost(script);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("[print] \"Punkte erfassen\" -> " + file("liste.pdf") + " (2 pages)\n"));
  const std::string pdf = file("liste.pdf");
  ASSERT_EQ(std::system(("pdftotext -layout '" + pdf + "' '" + pdf + ".txt'").c_str()), 0);
  const std::string text = slurp(pdf + ".txt");
  const std::size_t pageBreak = text.find('\f');
  ASSERT_NE(pageBreak, std::string::npos) << text;
  const std::string first = text.substr(0, pageBreak);
  const std::string second = text.substr(pageBreak + 1);
  EXPECT_THAT(first, ::testing::ContainsRegex("Name +X +Y +Z"));
  EXPECT_THAT(first, ::testing::ContainsRegex("MP1 +4500001.5000000 +5600001.0000000 +99.0000000"));
  EXPECT_THAT(first, ::testing::ContainsRegex("1 ?/ ?2"));
  EXPECT_THAT(second, ::testing::ContainsRegex("Name +X +Y +Z"));
  EXPECT_THAT(second, ::testing::ContainsRegex("MP60 +4500060.5000000 +5600060.0000000 +99.0000000"));
  EXPECT_THAT(second, ::testing::ContainsRegex("2 ?/ ?2"));
}

// The cells of the first table of a flat OpenDocument spreadsheet, row by row: numbers as LibreOffice read
// them, texts as they stand.
std::vector<std::vector<std::string>> spreadsheetCells(const std::string& fods) {
  std::vector<std::vector<std::string>> rows;
  const std::regex row("<table:table-row[^>]*>([\\s\\S]*?)</table:table-row>");
  const std::regex cell("<table:table-cell([^>]*?)(/>|>([\\s\\S]*?)</table:table-cell>)");
  const std::regex value("office:value=\"([^\"]*)\"");
  const std::regex paragraph("<text:p>([^<]*)</text:p>");
  for (auto r = std::sregex_iterator(fods.begin(), fods.end(), row); r != std::sregex_iterator(); ++r) {
    std::vector<std::string> cells;
    const std::string inner = (*r)[1];
    for (auto c = std::sregex_iterator(inner.begin(), inner.end(), cell); c != std::sregex_iterator(); ++c) {
      const std::string attributes = (*c)[1];
      const std::string body = (*c)[3];
      std::smatch m;
      if (std::regex_search(attributes, m, value)) {
        cells.push_back("=" + m[1].str());
      } else if (std::regex_search(body, m, paragraph)) {
        cells.push_back(m[1]);
      }
    }
    rows.push_back(cells);
  }
  return rows;
}

TEST_F(PointCaptureTest, LibreOfficeReadsTheSavedCsvAsNamesAndNumbers) {
  if (::access("/usr/bin/libreoffice", X_OK) != 0) GTEST_SKIP() << "LibreOffice Calc is not installed";
  HostRun run = cadhost("_ViraPtPick\n@dialog 4001 set 4001 Pü1\n4500000.125,5600000.25,98.5\n-1.5,2,0\n"
                        "@answer file " + file("punkte.csv") + "\n@dialog 4001 click 1\n");
  ASSERT_EQ(run.status, 0) << run.err;
  // As a user opens it: comma-separated, UTF-8 (filter options 44 = ",", 34 = '"', 76 = UTF-8, from line 1).
  const std::string command = "cd '" + dir_.string() + "' && HOME='" + dir_.string() +
                              "' libreoffice --headless -env:UserInstallation=file://" + (dir_ / "lo").string() +
                              " --convert-to fods --infilter=CSV:44,34,76,1 --outdir '" + dir_.string() +
                              "' punkte.csv >lo.log 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0) << slurp(dir_ / "lo.log");
  const auto rows = spreadsheetCells(slurp(dir_ / "punkte.fods"));
  ASSERT_EQ(rows.size(), 2u) << slurp(dir_ / "punkte.fods");
  EXPECT_THAT(rows[0], ::testing::ElementsAre("Pü1", "=4500000.125", "=5600000.25", "=98.5"));
  EXPECT_THAT(rows[1], ::testing::ElementsAre("Pü2", "=-1.5", "=2", "=0"));
}

}  // namespace
}  // namespace e2e
