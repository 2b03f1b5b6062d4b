#include <gmock/gmock.h>

#include "sdk/ui/CComboBox.h"
#include "sdk/ui/CMenu.h"
#include "UiTestDialog.h"

using ::testing::ElementsAre;

namespace uitest {
namespace {

// A virtual list in the way the module's tables use it: rows live in the list's owner data, the list answers
// cell texts itself and handles its own header clicks, keys and context menu.
class PointList : public CListCtrl {
 public:
  std::vector<std::vector<std::wstring>> rows;
  std::vector<std::string> events;
  int textRequests = 0;

  // As the module's list does: the first time it owns a window it makes it an owner-drawn virtual report.
  void PreSubclassWindow() override {
    events.push_back("subclassed");
    ModifyStyle(0, LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED);
  }

  void Fill() {
    InsertColumn(0, L"Name");
    InsertColumn(1, L"X", LVCFMT_RIGHT, 80);
    SetItemCountEx(static_cast<int>(rows.size()), LVSICF_NOSCROLL);
  }
  std::wstring GetCellDisplayText(int row, int column) override {
    const std::wstring text = GetItemText(row, column);
    return text == L"@C" ? L"[x]" : text;
  }
  bool OnNotifyReflect(ui::UiNotify& n) override {
    switch (n.code) {
      case LVN_GETDISPINFO:
        ++textRequests;
        *n.text = rows[n.row][n.col];
        return true;
      case LVN_COLUMNCLICK:
        events.push_back("header " + std::to_string(n.col));
        GetHeaderCtrl()->SetSortMark(n.col, 2);
        return true;
      case LVN_KEYDOWN:
        events.push_back("key " + std::to_string(n.key));
        return true;
      case LVN_ITEMCHANGED:
        events.push_back("row " + std::to_string(n.row) + ((n.newState & LVIS_SELECTED) != 0 ? " on" : " off"));
        return true;
      case NM_RCLICK: {
        events.push_back("right " + std::to_string(n.row) + "," + std::to_string(n.col));
        CMenu menu;
        if (!menu.LoadMenu(kMenu)) return true;
        const int chosen = menu.GetSubMenu(0)->TrackPopupMenu(TPM_RETURNCMD, n.point.x, n.point.y, this);
        if (chosen != 0) events.push_back("menu " + std::to_string(chosen));
        return true;
      }
      default: return false;
    }
  }
};

class ListViewTest : public UiTest {
 protected:
  void SetUp() override {
    UiTest::SetUp();
    ASSERT_TRUE(dialog_.Create(kDialog));
    ASSERT_TRUE(list_.SubclassDlgItem(kList, &dialog_));
    list_.rows = {{L"P1", L"10.000"}, {L"P2", L"@C"}, {L"P3", L"-3.5"}};
    list_.Fill();
    list_.events.clear();
  }
  TestDialog dialog_;
  PointList list_;
};

TEST_F(ListViewTest, VirtualListAsksItsOwnerForEveryCellItShows) {
  EXPECT_EQ(list_.GetItemCount(), 3);
  EXPECT_EQ(list_.textRequests, 0);  // nothing is stored or formatted in advance
  EXPECT_EQ(list_.GetItemText(2, 1), L"-3.5");
  EXPECT_EQ(list_.GetItemText(3, 0), L"");  // beyond the rows: nothing, and nobody asked
  EXPECT_EQ(list_.textRequests, 1);
  EXPECT_EQ(list_.GetColumnWidth(0), 6 * 4 + 12);  // heading width at 6 pixels a character, plus margins
  list_.rows.pop_back();
  list_.SetItemCountEx(2);
  EXPECT_EQ(list_.GetItemCount(), 2);
}

TEST_F(ListViewTest, HeaderCanBeSubclassedAndKeepsItsColumns) {
  EXPECT_NE(list_.GetStyle() & LVS_OWNERDRAWFIXED, 0U);
  struct SortHeader : CHeaderCtrl {
    bool subclassed = false;
    void PreSubclassWindow() override { subclassed = true; }
  } header;
  CHeaderCtrl* original = list_.GetHeaderCtrl();
  ASSERT_TRUE(header.SubclassWindow(original->GetSafeHwnd()));
  EXPECT_TRUE(header.subclassed);
  EXPECT_EQ(list_.GetHeaderCtrl(), &header);
  EXPECT_EQ(header.GetItemCount(), 2);
  EXPECT_EQ(header.GetItemText(1), L"X");
  header.SetSortMark(0, 1);
  header.SetSortMark(1, 2);  // one sorted column at a time
  EXPECT_EQ(header.GetSortMark(0), 0);
  header.SetSortMark(0, 0);  // clearing another column's mark leaves this one
  EXPECT_EQ(header.GetSortMark(1), 2);
  EXPECT_FALSE(header.SubclassWindow(list_.GetSafeHwnd()));  // already has a window
  dialog_.DestroyWindow();
  EXPECT_EQ(header.GetSafeHwnd(), nullptr);
}

TEST_F(ListViewTest, UserActionsArriveAsNotificationsAtTheList) {
  run("@dialog 900 select 14 2 0");
  EXPECT_THAT(list_.events, ElementsAre("row 2 on", "row 0 on"));
  EXPECT_EQ(list_.GetSelectedCount(), 2);
  EXPECT_EQ(list_.GetNextItem(-1, LVNI_FOCUSED), 0);
  EXPECT_EQ(list_.GetNextItem(0, LVNI_SELECTED), 2);
  list_.events.clear();
  run("@dialog 900 select 14 1");
  EXPECT_THAT(list_.events, ElementsAre("row 0 off", "row 2 off", "row 1 on"));
  list_.events.clear();
  run("@dialog 900 header 14 1");
  run("@dialog 900 key 14 Delete");
  run("@dialog 900 key 14 O");
  run("@dialog 900 key 14 F2");
  run("@dialog 900 menu 14 1 0 4");
  EXPECT_THAT(list_.events, ElementsAre("header 1", "key 46", "key 79", "key 113", "right 1,0", "menu 4"));
  EXPECT_EQ(list_.GetHeaderCtrl()->GetSortMark(1), 2);
}

TEST_F(ListViewTest, ContextMenuEntriesThatCannotBeChosenAreErrors) {
  EXPECT_EQ(fail("@dialog 900 menu 14 0 1 9"),
            "the context menu has no entry 9 (control 14 of dialog 900, row 0, column 1)");
  EXPECT_EQ(fail("@dialog 900 menu 14 0 1 7"),
            "the context menu entry 7 is greyed out (control 14 of dialog 900, row 0, column 1)");
  EXPECT_EQ(fail("@dialog 900 menu 10 0 0 3"), "control 10 of dialog 900 is an edit, not a list");
  list_.rows.clear();
  list_.SetItemCountEx(0);
  EXPECT_EQ(fail("@dialog 900 menu 14 0 0 3"), "control 14 of dialog 900 has no row 0 (it has 0 rows)");
  EXPECT_EQ(fail("@dialog 900 header 14 2"), "control 14 of dialog 900 has no column 2 (it has 2 columns)");
  EXPECT_EQ(fail("@dialog 900 select 14 x"), "\"x\" is not a number: @dialog ID select CTRL ROW...");
}

TEST_F(ListViewTest, RightClickThatOpensNoMenuIsReported) {
  list_.rows = {{L"a", L"b"}};
  // A list of the framework's own (no owner answering) opens no menu.
  dialog_.DestroyWindow();
  TestDialog other;
  ASSERT_TRUE(other.Create(kDialog));
  auto* bare = dynamic_cast<CListCtrl*>(other.GetDlgItem(kList));
  ASSERT_NE(bare, nullptr);
  bare->InsertColumn(0, L"A");
  bare->SetItemCountEx(1);
  EXPECT_EQ(fail("@dialog 900 menu 14 0 0 3"),
            "no context menu was opened (control 14 of dialog 900, row 0, column 0)");
  // With nobody to answer, a virtual list shows empty cells.
  EXPECT_EQ(bare->GetItemText(0, 0), L"");
}

TEST_F(ListViewTest, DropDownListOverACellReportsTheUsersChoice) {
  struct Chooser : CComboBox {
    std::vector<int> choices;
    bool OnCommandReflect(int code) override {
      if (code == CBN_SELCHANGE) choices.push_back(GetCurSel());
      return code == CBN_SELCHANGE;
    }
  } chooser;
  ASSERT_TRUE(chooser.Create(WS_VISIBLE | CBS_DROPDOWNLIST, CRect(40, 20, 120, 80), &list_, 5002));
  for (const wchar_t* unit : {L"mm", L"cm", L"m"}) chooser.AddString(unit);
  EXPECT_EQ(chooser.FindStringExact(-1, L"CM"), 1);
  EXPECT_EQ(chooser.SetCurSel(2), 2);  // by program: no notification
  EXPECT_EQ(chooser.GetWindowText(), L"m");
  run("@dialog 900 select 5002 0");
  EXPECT_EQ(chooser.choices, std::vector<int>{0});
  EXPECT_EQ(chooser.GetWindowText(), L"mm");
  EXPECT_EQ(chooser.InsertString(0, L"µm"), 0);
  EXPECT_EQ(chooser.GetCurSel(), 1);  // the choice moves with its entry
  EXPECT_EQ(fail("@dialog 900 select 5002 4"), "control 5002 of dialog 900 has no entry 4 (it has 4 entries)");
  EXPECT_EQ(fail("@dialog 900 select 5002 0 1"), "a drop-down list takes one entry: @dialog ID select CTRL ROW");
  // Shown below the list it lies over.
  EXPECT_THAT(transcriptOf([] { run("@dialog 900 dump"); }),
              ::testing::HasSubstr("  row 2 \"P3\" \"-3.5\"\n  5002 combo \"mm\"\n"
                                   "    entries \"µm\" \"mm\" \"cm\" \"m\"\n"));
}

TEST_F(ListViewTest, ListWithoutOwnerDataKeepsItsOwnTexts) {
  CListCtrl stored;
  TestDialog other;
  dialog_.DestroyWindow();
  ASSERT_TRUE(other.Create(kDialog));
  ASSERT_TRUE(stored.SubclassDlgItem(kList, &other));
  stored.ModifyStyle(LVS_OWNERDATA, 0);
  stored.InsertColumn(0, L"A");
  stored.InsertColumn(1, L"B");
  EXPECT_EQ(stored.InsertItem(5, L"first"), 0);
  EXPECT_EQ(stored.InsertItem(0, L"zero"), 0);
  EXPECT_TRUE(stored.SetItemText(1, 1, L"b1"));
  EXPECT_FALSE(stored.SetItemText(2, 0, L"none"));
  stored.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
  stored.DeleteColumn(0);
  EXPECT_EQ(stored.GetItemText(1, 0), L"b1");
  EXPECT_TRUE(stored.DeleteItem(0));
  EXPECT_EQ(stored.GetItemState(0, LVIS_SELECTED), LVIS_SELECTED);
  EXPECT_EQ(stored.GetItemCount(), 1);
}

TEST_F(ListViewTest, DumpShowsEveryControlWithItsKindTextAndState) {
  list_.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
  run("@dialog 900 header 14 1");
  dialog_.CheckDlgButton(kCheck, BST_CHECKED);
  dialog_.SetDlgItemText(kCheck, L"Zeile 1\nZeile 2");
  dialog_.GetDlgItem(kSave)->EnableWindow(false);
  dialog_.GetDlgItem(IDCANCEL)->ShowWindow(SW_HIDE);
  EXPECT_EQ(transcriptOf([] { run("@dialog 900 dump"); }),
            "dialog 900 \"Testdialog\"\n"
            "-1 static \"Nächste Nummer:\"\n"
            "10 edit \"7\"\n"
            "11 edit \"\" readonly\n"
            "12 checkbox \"Zeile 1\\nZeile 2\" checked\n"
            "13 updown \"\" position 0\n"
            "-1 line \"\"\n"
            "14 list \"\"\n"
            "  header \"Name\" \"X\" sorted 1 descending\n"
            "  row 0 \"P1\" \"10.000\"\n"
            "  row 1 \"P2\" \"[x]\" selected\n"
            "  row 2 \"P3\" \"-3.5\"\n"
            "15 button \"Speichern als...\" disabled\n"
            "2 button \"Abbrechen\" hidden\n"
            "1 button \"OK\"\n");
}

}  // namespace
}  // namespace uitest
