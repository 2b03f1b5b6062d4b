// The coordinate table: column keys with their pairings, units, decimals that follow the width, comparison
// rules, and rows that follow the observed point list.
#include "ui/CCoordListCtrl.h"

#include <gmock/gmock.h>

#include "app/ViraResourceIds.h"
#include "capture/CDlgPickPoints.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"

namespace {

using ::testing::ElementsAre;

class CoordListTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host::headless::HeadlessUi::instance().reset();
    ASSERT_TRUE(dialog_.Create(IDD_PICK_POINTS));
    ASSERT_TRUE(list_.SubclassDlgItem(IDC_POINT_LIST, &dialog_));
  }
  void TearDown() override { dialog_.DestroyWindow(); }

  KoPoint* add(const char* name, double x, double y, double z) {
    KoPoint point(0, x, y, z, 0);
    point.name = name;
    return points_.AppendCopy(point);
  }
  std::wstring cell(int row, int column) { return list_.GetItemText(row, column); }
  std::vector<std::wstring> column(int c) {
    std::vector<std::wstring> texts;
    for (int r = 0; r < list_.GetItemCount(); ++r) texts.push_back(cell(r, c));
    return texts;
  }
  std::wstring header(int c) {
    std::wstring text;
    int alignment = 0, width = 0;
    list_.GetColumnHeader(text, alignment, width, c);
    return text + L"|" + std::to_wstring(alignment) + L"|" + std::to_wstring(width);
  }

  CDialog dialog_;
  KoPointList points_;
  CCoordListCtrl list_;
};

TEST_F(CoordListTest, ColumnsShowTheirFieldsWithUnitsAndTheDeliberatePairings) {
  KoPoint* p = add("Pü1", 1.5, -2.25, 0.001);
  p->number = 4000000000u;
  p->code = 13;
  p->dx = 0.003;
  p->dy = 0.004;
  p->mark = 0xFFFF;
  p->flag = 2 | 8;
  p->redu2 = 0.25;
  list_.Setup(&points_,
              {eKoRWNumber, eKoRWName, eKoRWCodeText, eKoRWPP, eKoRWX, eKoRWDS, eKoRWMark, eKoRWMark2, eKoRWActive,
               eKoRWAccepted, eKoRWResidualY, eKoRWStatus, eKoRWFlag},
              {kKoUnitMM, 0, 0, 0, kKoUnitMM, 0, 0, 0, 0, 0, kKoUnitCM, 0, 9});
  EXPECT_EQ(header(0), L"Nr [mm]|0|84");  // "9999999XXX" and the unit's width
  EXPECT_EQ(header(2), L"Code|1|42");
  EXPECT_EQ(header(3), L"Code|0|36");
  EXPECT_EQ(header(10), L"Residual Y [cm]|1|102");
  EXPECT_EQ(header(12), L" ??|0|12");  // no such column: it still gets the unit suffix
  EXPECT_EQ(list_.GetColumnCount(), 12);

  EXPECT_THAT(column(0), ElementsAre(L"4000000000"));
  EXPECT_THAT(column(1), ElementsAre(L"Pü1"));
  EXPECT_THAT(column(2), ElementsAre(L" 13"));
  EXPECT_THAT(column(3), ElementsAre(L"Pü1"));  // headed Code, shows the name
  EXPECT_EQ(cell(0, 4), L"1500.00000000000");   // metres shown in millimetres, 11 decimals at 84 pixels
  EXPECT_EQ(cell(0, 5), L"0.005000000");
  EXPECT_EQ(cell(0, 6), L"-1");
  EXPECT_EQ(cell(0, 7), L"");  // mark2 0 shows nothing
  EXPECT_EQ(list_.GetCellDisplayText(0, 8), L"[x]");
  EXPECT_EQ(list_.GetCellDisplayText(0, 9), L"[ ]");
  EXPECT_EQ(cell(0, 10), L"25.00000000000000");
  EXPECT_EQ(cell(0, 11), L"");
  EXPECT_FALSE(list_.GetCheckState(1, 8, 0));  // beyond the rows

  // The decimals follow the column width: 60 pixels at 6 per character give 7, 20 give 3, 200 give 16.
  for (const auto& [width, text] : {std::pair{60, L"1500.0000000"}, {20, L"1500.000"}, {200, L"1500.0000000000000000"}}) {
    list_.SetColumnWidth(4, width);
    EXPECT_EQ(cell(0, 4), text);
  }
}

TEST_F(CoordListTest, SortingFollowsEachFieldsRuleAndRowsFollowTheList) {
  KoPoint* a = add("B", 3, 0, 0);
  KoPoint* b = add("A", 1, 0, 0);
  KoPoint* c = add("C", 2, 0, 0);
  a->dx = 5;  // deviation 5
  b->dx = -1;
  b->dy = -6;  // deviation 6.08, the smallest dx
  c->dz = 0.5;
  a->number = 0xFFFFFFFFu;  // the greatest as unsigned, the smallest as the 32-bit difference read signed
  b->number = 1;
  c->number = 2;
  list_.Setup(&points_, {eKoRWName, eKoRWX, eKoRWDS, eKoRWNumber});
  host::ui::clickHeader(list_, 1);
  EXPECT_THAT(column(0), ElementsAre(L"A", L"C", L"B"));
  host::ui::clickHeader(list_, 2);
  EXPECT_THAT(column(0), ElementsAre(L"C", L"B", L"A"));
  host::ui::clickHeader(list_, 0);
  host::ui::clickHeader(list_, 0);
  EXPECT_THAT(column(0), ElementsAre(L"C", L"B", L"A"));
  host::ui::clickHeader(list_, 3);
  EXPECT_THAT(column(0), ElementsAre(L"B", L"A", L"C"));

  // Every change of the list rebuilds the rows in list order; a filter hides points; Delete removes from the list.
  add("D", 4, 0, 0);
  EXPECT_THAT(column(0), ElementsAre(L"B", L"A", L"C", L"D"));
  struct NoA : KoPointFilter {
    bool Test(const KoPoint& p) const override { return p.name.Compare("A") != 0; }
  } noA;
  list_.SetFilter(&noA);
  EXPECT_THAT(column(0), ElementsAre(L"B", L"C", L"D"));
  add("A", 9, 0, 0);  // appended, but filtered out
  add("E", 5, 0, 0);
  EXPECT_THAT(column(0), ElementsAre(L"B", L"C", L"D", L"E"));
  list_.SetDeleteMode(CListCtrlEx::kDeleteWithoutAsking);
  host::ui::selectRows(list_, {0, 2});
  host::ui::pressKey(list_, VK_DELETE, 0, 0);
  EXPECT_EQ(points_.Count(), 4u);
  EXPECT_THAT(column(0), ElementsAre(L"C", L"E"));
  list_.SetFilter(nullptr);
  points_.DeleteAll();
  EXPECT_EQ(list_.GetItemCount(), 0);
}

TEST(PointNumberingTest, NextNumbersAdvanceAndStepBackKeepingTheirWidth) {
  const std::pair<const wchar_t*, const wchar_t*> advances[] = {
      {L"P1", L"P2"},   {L"A9", L"A10"},     {L"A09", L"A10"}, {L"B", L"B1"},   {L"", L"1"},
      {L"7", L"8"},     {L"009", L"010"},    {L" 12 ", L"13"}, {L"Pü9", L"Pü10"}, {L"99", L"100"},
      {L"X-5", L"X-4"}, {L"Q99999999999", L"Q02147483647"}, {L"\u20AC\u20AC", L"01"}};
  for (const auto& [from, to] : advances) EXPECT_EQ(CDlgPickPoints::AdvanceNumber(from), to) << from;
  EXPECT_EQ(CDlgPickPoints::StepBackNumber(L"P000"), L"P000");
  EXPECT_EQ(CDlgPickPoints::StepBackNumber(L"P010"), L"P009");
  EXPECT_EQ(CDlgPickPoints::StepBackNumber(L"A"), L"A0");
}

}  // namespace
