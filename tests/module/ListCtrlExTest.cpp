// The extended list under the module's tables: its fixed sort, header and menu sorting, deletion, column
// fitting and the separated-values file, driven through a small list of its own.
#include "ui/CListCtrlEx.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <random>

#include "app/ViraResourceIds.h"
#include "app/ViraResources.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"
#include "tests/support/ReadFile.h"
#include "ui/ListQuickSort.h"

namespace {

namespace fs = std::filesystem;

struct Row {
  std::wstring name;
  int key = 0;
  std::wstring extra;  // "@C" makes the cell a check box, "@x" a cell that is left out
  bool checked = false;
  bool hasText = true;  // false: the third column answers no text
};

// Three columns: name, key (sortable), extra (not sortable).
class TestList : public CListCtrlEx {
 public:
  std::vector<Row> rows;
  std::vector<int> deleted;

  void* GetFirstItem() override { return rows.empty() ? nullptr : &rows.front(); }
  void* GetNextItem(void* previous) override {
    auto* row = static_cast<Row*>(previous);
    return row + 1 < rows.data() + rows.size() ? row + 1 : nullptr;
  }
  bool GetColumnHeader(std::wstring& text, int& alignment, int& width, int column) override {
    if (column > 2) return false;
    text = column == 0 ? L"Name" : column == 1 ? L"Key" : L"Extra";
    alignment = column == 1 ? 1 : 0;
    width = 100;
    return true;
  }
  bool GetCellText(wchar_t* buffer, int length, void* data, int, int column) override {
    const Row& row = *static_cast<Row*>(data);
    if (column == 2 && !row.hasText) return false;
    const std::wstring text = column == 0 ? row.name : column == 1 ? std::to_wstring(row.key) : row.extra;
    std::swprintf(buffer, static_cast<std::size_t>(length), L"%ls", text.c_str());
    return true;
  }
  bool GetCheckState(int row, int, int) override { return static_cast<Row*>(RowData(row))->checked; }
  bool IsColumnSortable(int column) override { return column < 2; }
  int CompareItems(int column, void* a, void* b) override {
    const Row& p = *static_cast<Row*>(a);
    const Row& q = *static_cast<Row*>(b);
    return column == 1 ? p.key - q.key : column == 2 ? p.extra.compare(q.extra) : p.name.compare(q.name);
  }
  bool DeleteDataItem(int row) override {
    deleted.push_back(static_cast<Row*>(RowData(row))->key);
    return true;
  }
  std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (int r = 0; r < GetItemCount(); ++r) names.push_back(GetItemText(r, 0));
    return names;
  }
};

// The lists speak German with the module's own resources while it lives, whatever language library an
// earlier test of this process loaded.
class GermanLists {
 public:
  GermanLists() : test_(CListCtrlEx::GetLanguageTest()), resources_(CListCtrlEx::GetResourceSource()) {
    CListCtrlEx::SetLanguage([] { return true; }, ViraGermanResources);
  }
  ~GermanLists() { CListCtrlEx::SetLanguage(test_, resources_); }

 private:
  CListCtrlEx::LanguageTest test_;
  CListCtrlEx::ResourceSource resources_;
};

class ListCtrlExTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host::headless::HeadlessUi::instance().reset();
    german_.emplace();
    ASSERT_TRUE(dialog_.Create(IDD_PICK_POINTS));
    ASSERT_TRUE(list_.SubclassDlgItem(IDC_POINT_LIST, &dialog_));
    list_.rows = {{L"P3", 3, L"@C", true, true}, {L"P1", 1, L"@C", false, true}, {L"P2", 2, L"b", false, true}};
    list_.InsertColumnsFromHeaders();
    list_.Refresh();
  }
  void TearDown() override {
    dialog_.DestroyWindow();
    host::headless::HeadlessUi::instance().reset();
    german_.reset();
  }
  template <typename Action>
  static std::string transcriptOf(Action action) {
    ::testing::internal::CaptureStdout();
    action();
    return ::testing::internal::GetCapturedStdout();
  }
  std::string written(const std::function<bool(const std::wstring&)>& write) {
    const fs::path file = fs::temp_directory_path() / ("vira-list-" + std::to_string(::getpid()) + ".csv");
    EXPECT_TRUE(write(file.wstring()));
    const std::string bytes = readFile(file);
    fs::remove(file);
    return bytes;
  }

  std::optional<GermanLists> german_;
  CDialog dialog_;
  TestList list_;
};

using ::testing::ElementsAre;

TEST(ListQuickSortTest, SortsEveryShapeAndSizeAndKeepsItsOrderAmongEqualKeys) {
  std::mt19937 random(7);
  for (int size : {0, 1, 2, 8, 9, 10, 31, 100, 1000, 20000}) {
    for (int shape = 0; shape < 4; ++shape) {
      std::vector<int> values(static_cast<std::size_t>(size));
      for (int i = 0; i < size; ++i)
        values[static_cast<std::size_t>(i)] = shape == 0 ? static_cast<int>(random() % 50)
                                            : shape == 1 ? i
                                            : shape == 2 ? size - i
                                                         : std::min(i, size - i);  // organ pipe
      ListQuickSort(values.data(), size, [](int a, int b) { return a <= b; });
      EXPECT_TRUE(std::is_sorted(values.begin(), values.end())) << size << " shape " << shape;
    }
  }
  // Ranges of eight or fewer: the greatest moves to the end, and among equal ones the last scanned wins, so
  // (1,a) (0,b) (1,c) becomes (0,b) (1,a) (1,c); a sort that let the first equal win gives (0,b) (1,c) (1,a).
  std::vector<std::pair<int, char>> small = {{1, 'a'}, {0, 'b'}, {1, 'c'}};
  ListQuickSort(small.data(), 3, [](auto& p, auto& q) { return p.first <= q.first; });
  EXPECT_THAT(small, ElementsAre(std::pair{0, 'b'}, std::pair{1, 'a'}, std::pair{1, 'c'}));
}

TEST_F(ListCtrlExTest, HeaderClicksTurnTheDirectionAndUnsortableColumnsBeep) {
  EXPECT_THAT(list_.Names(), ElementsAre(L"P3", L"P1", L"P2"));
  host::ui::selectRows(list_, {0});  // P3 stays selected whatever the order
  host::ui::clickHeader(list_, 1);
  EXPECT_THAT(list_.Names(), ElementsAre(L"P1", L"P2", L"P3"));
  EXPECT_EQ(list_.GetHeaderCtrl()->GetSortMark(1), 1);
  EXPECT_EQ(list_.GetItemState(2, LVIS_SELECTED), LVIS_SELECTED);
  host::ui::clickHeader(list_, 1);
  EXPECT_THAT(list_.Names(), ElementsAre(L"P3", L"P2", L"P1"));
  EXPECT_EQ(list_.GetHeaderCtrl()->GetSortMark(1), 2);
  EXPECT_EQ(list_.GetItemState(0, LVIS_SELECTED), LVIS_SELECTED);
  EXPECT_EQ(list_.GetItemState(2, LVIS_SELECTED), 0u);
  host::ui::clickHeader(list_, 1);
  EXPECT_THAT(list_.Names(), ElementsAre(L"P1", L"P2", L"P3"));
  EXPECT_EQ(list_.Header().GetDisplayText(1), L"Key \u25B2");

  EXPECT_EQ(transcriptOf([&] { host::ui::clickHeader(list_, 2); }), "[beep 1000 Hz 50 ms]\n");
  EXPECT_THAT(list_.Names(), ElementsAre(L"P1", L"P2", L"P3"));
  // The menu sorts the column under the cursor in its fixed direction without asking whether it may.
  host::headless::HeadlessUi::instance().chooseMenuEntry(ID_LIST_SORT_DESCENDING);
  host::ui::rightClickCell(list_, 0, 2);
  EXPECT_EQ(list_.GetHeaderCtrl()->GetSortMark(2), 2);
  EXPECT_THAT(list_.Names(), ElementsAre(L"P2", L"P1", L"P3"));  // "b" before the two "@C"
}

TEST_F(ListCtrlExTest, DeleteAsksByModeAndRebuildsWhenTheRowsAnswerDeleted) {
  host::ui::selectRows(list_, {0, 2});
  host::headless::HeadlessUi::instance().queueMessageAnswer(IDNO);
  EXPECT_EQ(transcriptOf([&] { host::ui::pressKey(list_, VK_DELETE, 0, 0); }),
            "[message] \"Selektierte Daten löschen?\" (yes/no) -> no\n");
  EXPECT_TRUE(list_.deleted.empty());
  EXPECT_EQ(list_.Selection().size(), 2u);

  host::headless::HeadlessUi::instance().queueMessageAnswer(IDYES);
  transcriptOf([&] { list_.DeleteSelected(); });
  EXPECT_THAT(list_.deleted, ElementsAre(3, 2));
  EXPECT_TRUE(list_.Selection().empty());
  EXPECT_EQ(list_.MenuRow(), -1);

  list_.SetDeleteMode(CListCtrlEx::kDeleteWithoutAsking);
  host::ui::selectRows(list_, {1});
  EXPECT_EQ(transcriptOf([&] { list_.DeleteSelected(); }), "");
  EXPECT_THAT(list_.deleted, ElementsAre(3, 2, 1));
  list_.SetDeleteMode(5);
  host::ui::selectRows(list_, {1});
  list_.DeleteSelected();
  EXPECT_EQ(list_.deleted.size(), 3u);
}

TEST_F(ListCtrlExTest, FitColumnsSharesTheDifferenceAndLeavesTheRemainder) {
  list_.MoveWindow(CRect(0, 0, 250, 100));
  list_.FitColumns(-1);  // 300 into 250: each gives 16, the remainder 2 stays
  EXPECT_EQ(list_.GetColumnWidth(0) + list_.GetColumnWidth(1) + list_.GetColumnWidth(2), 252);
  EXPECT_EQ(list_.GetColumnWidth(1), 84);
  list_.SetColumnWidth(0, 20);
  list_.SetColumnWidth(1, 200);
  list_.SetColumnWidth(2, 100);
  list_.FitColumns(-1);  // 70 too wide, 23 each; 20 - 23 would be 10 or less: that column keeps its width
  EXPECT_THAT((std::vector{list_.GetColumnWidth(0), list_.GetColumnWidth(1), list_.GetColumnWidth(2)}),
              ElementsAre(20, 177, 77));
  list_.FitColumns(2);  // one column gives the whole excess
  EXPECT_EQ(list_.GetColumnWidth(2), 53);
  list_.FitColumns(2);  // fitting exactly: nothing changes
  EXPECT_EQ(list_.GetColumnWidth(2), 53);
  list_.MoveWindow(CRect(0, 0, 261, 100));
  host::ui::pressKey(list_, 'O', 0, 0);  // the gap of 11 gives 3 to each, 2 stay over
  EXPECT_THAT((std::vector{list_.GetColumnWidth(0), list_.GetColumnWidth(1), list_.GetColumnWidth(2)}),
              ElementsAre(23, 180, 56));
  host::headless::HeadlessUi::instance().chooseMenuEntry(ID_LIST_PRINT + 100);  // dismissed: only remembers
  host::ui::rightClickCell(list_, 0, 1);
  host::headless::HeadlessUi::instance().menuOutcome();
  host::ui::pressKey(list_, 'P', 0, 0);  // the column of the last context menu takes the gap alone
  EXPECT_EQ(list_.GetColumnWidth(1), 182);
}

TEST_F(ListCtrlExTest, SeparatedFilesEndEveryFieldAndLeaveOutFailingCells) {
  list_.rows[2].hasText = false;
  list_.rows.push_back({L"P4", 4, L"@x", false, true});
  list_.Refresh();
  EXPECT_EQ(written([&](const std::wstring& path) { return list_.WriteSeparatedFile(path, L";"); }),
            "Name;Key;Extra;\nP3;3;1;\nP1;1;0;\nP2;2;\nP4;4;\n");
  EXPECT_EQ(written([&](const std::wstring& path) { return list_.WriteSeparatedFile(path, false, false); }),
            "P3,3,1,\nP1,1,0,\nP2,2,\nP4,4,\n");

  list_.rows.clear();
  list_.Refresh();
  EXPECT_EQ(written([&](const std::wstring& path) { return list_.WriteSeparatedFile(path, true, false); }),
            "Name,Key,Extra,\n");
  EXPECT_EQ(written([&](const std::wstring& path) { return list_.WriteSeparatedFile(path, false, false); }), "");
  EXPECT_FALSE(list_.WriteSeparatedFile(fs::temp_directory_path().wstring(), L" "));
  EXPECT_FALSE(list_.WriteSeparatedFile(L"/nonexistent-vira-dir/a.csv", true, true));
}

TEST_F(ListCtrlExTest, InPlaceEditorKeepsReturnAndEscapeFromTheDialog) {
  struct EditableList : TestList {
    int GetCellEditKind(int, int column) override {
      return column == 0 ? kEditText : column == 2 ? kEditChoice : kEditNone;
    }
    bool GetCellChoices(int, int, std::vector<std::wstring>& choices) override {
      choices = {L"Grenzpunkt", L"Festpunkt", L"Gebäude"};
      return true;
    }
    bool SetCellText(int row, int column, const std::wstring& text) override {
      (column == 0 ? static_cast<Row*>(RowData(row))->name : static_cast<Row*>(RowData(row))->extra) = text;
      return true;
    }
  };
  dialog_.DestroyWindow();
  ASSERT_TRUE(dialog_.Create(IDD_PICK_POINTS));
  EditableList list;
  ASSERT_TRUE(list.SubclassDlgItem(IDC_POINT_LIST, &dialog_));
  list.rows = {{L"P1", 1, L""}, {L"P2", 2, L""}};
  list.InsertColumnsFromHeaders();
  list.Refresh();

  host::ui::selectRows(list, {1});
  host::ui::pressKey(list, VK_F2, 0, 0);
  ASSERT_NE(list.Editor(), nullptr);
  host::ui::typeText(*list.Editor(), L"Nord");
  host::ui::pressKey(*list.Editor(), VK_RETURN, 0, 0);
  EXPECT_EQ(list.Editor(), nullptr);
  EXPECT_EQ(list.GetItemText(1, 0), L"Nord");
  EXPECT_NE(dialog_.GetSafeHwnd(), nullptr);  // Return did not press OK

  list.EditCell(0, 0);
  host::ui::typeText(*list.Editor(), L"Süd");
  host::ui::pressKey(*list.Editor(), VK_ESCAPE, 0, 0);
  EXPECT_EQ(list.GetItemText(0, 0), L"P1");
  EXPECT_NE(dialog_.GetSafeHwnd(), nullptr);  // Escape did not cancel the dialog
  list.EditCell(0, 1);  // not editable
  EXPECT_EQ(list.Editor(), nullptr);

  // A drop-down cell opens on its current value; choosing an entry takes it, Escape keeps the old one.
  list.rows[0].extra = L"Festpunkt";
  list.EditCell(0, 2);
  ASSERT_NE(list.Editor(), nullptr);
  EXPECT_EQ(list.Editor()->GetWindowText(), L"Festpunkt");
  host::ui::chooseEntry(*list.Editor(), 2);
  EXPECT_EQ(list.Editor(), nullptr);
  EXPECT_EQ(list.rows[0].extra, L"Gebäude");
  list.EditCell(0, 2);
  host::ui::pressKey(*list.Editor(), VK_ESCAPE, 0, 0);
  EXPECT_EQ(list.rows[0].extra, L"Gebäude");
  // Clicking elsewhere while editing keeps what was typed.
  list.EditCell(1, 0);
  host::ui::typeText(*list.Editor(), L"West");
  dialog_.GetDlgItem(IDC_NEXT_NUMBER)->SetFocus();
  EXPECT_EQ(list.Editor(), nullptr);
  EXPECT_EQ(list.rows[1].name, L"West");
}

TEST(CommonControlsTest, AnOutdatedListControlEndsTheProcessUnlessIgnored) {
  const GermanLists german;
  struct OldControls : host::headless::HeadlessUi {
    unsigned commonControlsVersion() override { return 4u * 65536u + 71u; }
  } old;
  host::ui::setBackend(&old);
  old.queueMessageAnswer(IDIGNORE);
  ::testing::internal::CaptureStdout();
  EXPECT_TRUE(CListCtrlEx::VerifyCommonControls());
  const std::string shown = ::testing::internal::GetCapturedStdout();
  EXPECT_THAT(shown, ::testing::StartsWith("[message] \"Auf Ihrem System sind einige Systemdateien veraltet"));
  EXPECT_THAT(shown, ::testing::HasSubstr("abstürzen.\"\" (abort/retry/ignore) -> ignore\n"));
  old.queueMessageAnswer(IDRETRY);
  EXPECT_EXIT(CListCtrlEx::VerifyCommonControls(), ::testing::ExitedWithCode(0), "");
  host::ui::setBackend(nullptr);
  EXPECT_TRUE(CListCtrlEx::VerifyCommonControls());
}

}  // namespace
