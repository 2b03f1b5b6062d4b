// The coordinate edit inside a real (headless) dialog: what it shows, what it reads, where the caret stays.
#include "ui/CKoCoordEdit.h"

#include "app/ViraResourceIds.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"
#include "sdk/ui/CDialog.h"

#include <gtest/gtest.h>

namespace {

class CoordEditTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host::headless::HeadlessUi::instance().reset();
    // Any dialog with an editable field will do; the module's own transformation dialog has six.
    ASSERT_TRUE(dialog_.Create(IDD_MOVE_DRAWING));
    ASSERT_TRUE(edit_.SubclassDlgItem(IDC_TARGET_1, &dialog_));
  }
  void TearDown() override {
    dialog_.DestroyWindow();
    host::headless::HeadlessUi::instance().reset();
  }

  void type(const std::wstring& text) { host::ui::typeText(edit_, text); }

  CDialog dialog_;
  CKoCoordEdit edit_;
};

TEST_F(CoordEditTest, ShowsEachModeAndReadsItsOwnOutputBack) {
  EXPECT_EQ(edit_.Precision(), 4);
  EXPECT_EQ(edit_.Mode(), CKoCoordEdit::kModeXYZ);
  EXPECT_FALSE(edit_.HoldsValue());

  edit_.SetUnit(9);
  EXPECT_EQ(edit_.UnitText(), L"??");
  edit_.SetUnit(3);
  edit_.Write(KoPoint(0, 1, 2, 3, 0));
  EXPECT_TRUE(edit_.HoldsValue());
  EXPECT_EQ(edit_.GetWindowText(), L"1.0000  2.0000  3.0000 [m]");

  // Mode 0 writes a comma after X; the numeric conversion reads past it.
  edit_.SetMode(CKoCoordEdit::kModeXY);
  edit_.SetPrecision(2);
  edit_.Write(KoPoint(0, -1234.567, 89.125, 7, 0));
  EXPECT_EQ(edit_.GetWindowText(), L"-1234.57, 89.12  [m]");
  edit_.SetReferencePoint(KoPoint(0, 0, 0, 42, 0));
  edit_.Read();
  EXPECT_DOUBLE_EQ(edit_.Point().x, -1234.57);
  EXPECT_DOUBLE_EQ(edit_.Point().y, 89.12);
  // The unit stands where a height would: the numeric conversion reads it as 0.
  EXPECT_DOUBLE_EQ(edit_.Point().z, 0.0);

  // Mode 2 shows the deltas with their length and reads deltas only.
  edit_.SetMode(CKoCoordEdit::kModeDeltas);
  edit_.SetUnitText(L"");
  KoPoint deltas;
  deltas.dx = 3;
  deltas.dy = 4;
  edit_.Write(deltas);
  EXPECT_EQ(edit_.GetWindowText(), L"3.00  4.00  0.00 (5.00) ");
  KoPoint into(0, 9, 9, 9, 0);
  type(L"0.5 0.25");
  edit_.Read(into);
  EXPECT_DOUBLE_EQ(into.dx, 0.5);
  EXPECT_DOUBLE_EQ(into.dy, 0.25);
  EXPECT_DOUBLE_EQ(into.dz, 0.0);
  EXPECT_DOUBLE_EQ(into.x, 9.0);

  // An unknown mode neither shows nor reads.
  edit_.SetMode(7);
  edit_.Write(KoPoint(0, 5, 5, 5, 0));
  EXPECT_EQ(edit_.GetWindowText(), L"0.5 0.25");
  into = KoPoint(0, 1, 1, 1, 0);
  edit_.Read(into);
  EXPECT_DOUBLE_EQ(into.x, 1.0);
}

TEST_F(CoordEditTest, ReadStartsFromTheReferencePoint) {
  edit_.SetReferencePoint(KoPoint(0, 1, 2, 3, 0));
  type(L"5");
  edit_.Read();
  EXPECT_DOUBLE_EQ(edit_.Point().x, 5.0);
  EXPECT_DOUBLE_EQ(edit_.Point().y, 2.0);
  EXPECT_DOUBLE_EQ(edit_.Point().z, 3.0);

  // Garbage reads as atof reads it; runs of blanks separate like one; a fourth item is ignored.
  type(L"  abc   12.5m  -3e2 99");
  edit_.Read();
  EXPECT_DOUBLE_EQ(edit_.Point().x, 0.0);
  EXPECT_DOUBLE_EQ(edit_.Point().y, 12.5);
  EXPECT_DOUBLE_EQ(edit_.Point().z, -300.0);

  // Read(point) starts from nothing but the given point.
  KoPoint given(0, 7, 8, 9, 0);
  type(L"1");
  edit_.Read(given);
  EXPECT_DOUBLE_EQ(given.x, 1.0);
  EXPECT_DOUBLE_EQ(given.y, 8.0);
}

TEST_F(CoordEditTest, RefreshingKeepsTheCaretWhereTheUserTyped) {
  edit_.Write(KoPoint(0, 1, 2, 3, 0));
  edit_.SetSel(6, 6);
  edit_.Write(KoPoint(0, 10, 20, 30, 0));
  int start = -1, end = -1;
  edit_.GetSel(start, end);
  EXPECT_EQ(start, 6);
  EXPECT_EQ(end, 6);
}

}  // namespace
