// The transformation dialog as the surveyor drives it: picks fill the pairs round robin, the preview follows
// the fields and boxes.
#include "transform/CDlgMoveDrawing.h"

#include "app/ViraResourceIds.h"
#include "host/editor/Input.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"

#include <gtest/gtest.h>

namespace {

class MoveDrawingDialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host::headless::HeadlessUi::instance().reset();
    dialog_ = CDlgMoveDrawing::GetOrCreate();
    ASSERT_NE(dialog_, nullptr);
  }
  void TearDown() override {
    if (CDlgMoveDrawing* open = CDlgMoveDrawing::Instance()) open->Close();
    host::editor::clearQueuedInput();
    host::headless::HeadlessUi::instance().reset();
  }

  std::wstring text(int id) const { return dialog_->GetDlgItemText(id); }
  CWnd& control(int id) const { return *dialog_->GetDlgItem(id); }

  CDlgMoveDrawing* dialog_ = nullptr;
};

TEST_F(MoveDrawingDialogTest, StartsEmptyAndPicksFillThePairsRoundRobin) {
  EXPECT_EQ(CDlgMoveDrawing::GetOrCreate(), dialog_);
  EXPECT_EQ(text(IDC_PREVIEW), L"Es ist noch keine Transformation definiert");
  EXPECT_FALSE(control(IDOK).IsWindowEnabled());

  dialog_->AddDrawingPoint(KoPoint(0, 1, 2, 3, 0));
  EXPECT_EQ(text(IDC_ACTUAL_1), L"1.0000  2.0000  3.0000 ");
  // The empty target is the picked point itself: an identity shift.
  EXPECT_EQ(text(IDC_PREVIEW), L"Verschiebung um 0.000 0.000 0.000");
  EXPECT_TRUE(control(IDOK).IsWindowEnabled());

  dialog_->AddDrawingPoint(KoPoint(0, 10, 2, 3, 0));
  dialog_->AddDrawingPoint(KoPoint(0, 1, 12, 4, 0));
  dialog_->AddDrawingPoint(KoPoint(0, 7, 7, 7, 0));
  EXPECT_EQ(text(IDC_ACTUAL_1), L"7.0000  7.0000  7.0000 ");
  EXPECT_EQ(text(IDC_ACTUAL_2), L"10.0000  2.0000  3.0000 ");
  EXPECT_EQ(dialog_->NextPairIndex(), 1);
  for (int id : {IDC_PAIR_1, IDC_PAIR_2, IDC_PAIR_3}) EXPECT_EQ(dialog_->IsDlgButtonChecked(id), BST_CHECKED);
}

TEST_F(MoveDrawingDialogTest, ThePreviewFollowsTypingAndTheBoxes) {
  dialog_->AddDrawingPoint(KoPoint(0, 0, 0, 0, 0));
  dialog_->AddDrawingPoint(KoPoint(0, 1, 0, 0, 0));
  host::ui::typeText(control(IDC_TARGET_1), L"5 5");
  host::ui::typeText(control(IDC_TARGET_2), L"5 7");
  // (The solution's texts, and the scale box's effect, are the solver's and the end-to-end runs' subject.)
  EXPECT_NE(text(IDC_PREVIEW).find(L"\nDrehung in XY um 90.00°\n"), std::wstring::npos);

  // A pair switched off leaves the computation at once.
  host::ui::setCheck(control(IDC_PAIR_1), false);
  EXPECT_EQ(text(IDC_PREVIEW), L"Verschiebung um 4.000 7.000 0.000");
  host::ui::setCheck(control(IDC_PAIR_2), false);
  EXPECT_EQ(text(IDC_PREVIEW), L"Es ist noch keine Transformation definiert");
  EXPECT_FALSE(control(IDOK).IsWindowEnabled());
}

}  // namespace
