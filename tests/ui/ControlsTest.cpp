#include <gmock/gmock.h>

#include "host/ui/UserActions.h"
#include "sdk/ui/MessageBox.h"
#include "UiTestDialog.h"

namespace uitest {
namespace {

// Shows a value like the coordinate field does: the caret stays where the user had it.
class KeepCaretEdit : public CEdit {
 public:
  void Refresh(const std::wstring& text) {
    int start = 0;
    int end = 0;
    GetSel(start, end);
    SetWindowText(text);
    SetSel(start, start);
  }
  bool OnCommandReflect(int code) override {
    if (code == EN_CHANGE) ++changes;
    return false;  // the dialog hears of it too
  }
  int changes = 0;
};

TEST_F(UiTest, EditCaretIsResetBySettingTextUnlessTheFieldPutsItBack) {
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(kDialog));
  KeepCaretEdit field;
  ASSERT_TRUE(field.SubclassDlgItem(kEdit, &dialog));
  EXPECT_EQ(dialog.GetDlgItem(kEdit), &field);

  run("@dialog 900 set 10 12.5  3.0");
  int start = -1;
  int end = -1;
  field.GetSel(start, end);
  EXPECT_EQ(start, 9);  // typing leaves the caret after the text
  run("@dialog 900 key 10 Left");
  run("@dialog 900 key 10 Left");
  run("@dialog 900 key 10 Backspace");
  run("@dialog 900 key 10 7");
  EXPECT_EQ(field.GetWindowText(), L"12.5  7.0");
  field.GetSel(start, end);
  EXPECT_EQ(start, 7);

  field.Refresh(L"12.5000  7.0000");
  field.GetSel(start, end);
  EXPECT_EQ(start, 7);
  EXPECT_EQ(end, 7);
  field.SetWindowText(L"1");  // a plain refresh throws the caret to the start
  field.GetSel(start, end);
  EXPECT_EQ(start, 0);
  field.SetSel(5, 99);  // beyond the text: clamped
  field.GetSel(start, end);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(field.changes, 5);  // typing, Backspace, "7", both refreshes

  field.SetLimitText(3);
  field.SetSel(0, -1);
  field.ReplaceSel(L"123456");
  EXPECT_EQ(field.GetWindowText(), L"123");
  EXPECT_EQ(fail("@dialog 900 set 11 5"), "control 11 of dialog 900 is read-only");
  run("@dialog 900 key 11 5");
  EXPECT_EQ(dialog.GetDlgItemText(kReadOnly), L"");
}

TEST_F(UiTest, DisabledControlsAndCheckStatesAsTheUserMeetsThem) {
  std::vector<std::string> log;
  TestDialog dialog(&log);
  ASSERT_TRUE(dialog.Create(kDialog));
  CWnd* ok = dialog.GetDlgItem(IDOK);
  ok->EnableWindow(false);
  EXPECT_EQ(fail("@dialog 900 click 1"), "control 1 of dialog 900 is disabled");
  log.clear();
  // Return with the default button disabled only beeps.
  EXPECT_EQ(transcriptOf([] { run("@dialog 900 key 10 Return"); }), "[beep]\n");
  EXPECT_TRUE(log.empty());
  ok->EnableWindow(true);

  dialog.CheckDlgButton(kCheck, BST_CHECKED);  // set by program: no click
  EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), BST_CHECKED);
  run("@dialog 900 check 12 1");  // already so: nothing happens
  run("@dialog 900 check 12 0");
  EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), BST_UNCHECKED);
  run("@dialog 900 key 12 Space");
  EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), BST_CHECKED);
  EXPECT_THAT(log, ::testing::ElementsAre("command 12/0", "command 12/0"));
  EXPECT_EQ(fail("@dialog 900 check 12 2"), "check needs 0 or 1: @dialog ID check CTRL 0|1");

  // Escape is Cancel and Return the default button, wherever the focus is; Tab walks the tab order.
  log.clear();
  run("@dialog 900 key 12 Tab");
  EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(kList));
  run("@dialog 900 key 14 Shift+Tab");
  EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(kCheck));
  run("@dialog 900 key 10 Return");
  dialog.ShowWindow(SW_SHOW);  // ending a modeless dialog only hid it
  run("@dialog 900 key 10 Escape");
  EXPECT_THAT(log, ::testing::ElementsAre("command 1/0", "ok", "command 2/0", "cancel"));
}

TEST_F(UiTest, UpDownAsksTheOwnerBeforeItMoves) {
  std::vector<std::string> log;
  TestDialog dialog(&log);
  ASSERT_TRUE(dialog.Create(kDialog));
  auto* spin = dynamic_cast<CSpinButtonCtrl*>(dialog.GetDlgItem(kSpin));
  ASSERT_NE(spin, nullptr);
  spin->SetPos(50);
  log.clear();
  // The default range runs from 100 down to 0: the upper arrow gives a negative delta.
  run("@dialog 900 updown 13 up");
  run("@dialog 900 updown 13 down");
  run("@dialog 900 updown 13 down");
  EXPECT_THAT(log, ::testing::ElementsAre("delta -1", "delta 1", "delta 1"));
  EXPECT_EQ(spin->GetPos(), 51);
  dialog.refuseSpin = true;
  run("@dialog 900 updown 13 up");
  EXPECT_EQ(spin->GetPos(), 51);
  dialog.refuseSpin = false;
  spin->SetRange(0, 51);
  spin->SetBuddy(dialog.GetDlgItem(kReadOnly));
  spin->ModifyStyle(0, UDS_SETBUDDYINT);
  run("@dialog 900 updown 13 up");  // at the end of the range it stays
  EXPECT_EQ(spin->GetPos(), 51);
  EXPECT_EQ(dialog.GetDlgItemText(kReadOnly), L"51");
  EXPECT_EQ(fail("@dialog 900 updown 13 sideways"), "updown needs up or down: @dialog ID updown CTRL up|down");
}

TEST_F(UiTest, InPlaceEditorOverAListTakesReturnBeforeTheDialog) {
  std::vector<std::string> log;
  TestDialog dialog(&log);
  ASSERT_TRUE(dialog.Create(kDialog));
  class InPlaceEdit : public CEdit {
   public:
    bool PreTranslateKeyDown(CWnd&, unsigned key, unsigned) override {
      if (key != VK_RETURN && key != VK_ESCAPE) return false;
      committed = key == VK_RETURN ? GetWindowText() : L"<escaped>";
      DestroyWindow();
      return true;
    }
    std::wstring committed;
  } editor;
  CWnd* list = dialog.GetDlgItem(kList);
  ASSERT_TRUE(editor.Create(WS_VISIBLE | WS_BORDER, CRect(0, 20, 60, 36), list, 5001));
  EXPECT_EQ(dialog.GetDlgItem(5001), &editor);
  run("@dialog 900 set 5001 neu");
  log.clear();
  run("@dialog 900 key 5001 Return");
  EXPECT_EQ(editor.committed, L"neu");
  EXPECT_EQ(editor.GetSafeHwnd(), nullptr);
  EXPECT_TRUE(log.empty());  // the dialog did not see Return
  EXPECT_EQ(dialog.GetDlgItem(5001), nullptr);
}

TEST_F(UiTest, WaitCursorCountsNestedUsersAndBeepsReachTheTranscript) {
  auto& headless = host::headless::HeadlessUi::instance();
  {
    CWaitCursor outer;
    {
      CWaitCursor inner;
    }
    EXPECT_TRUE(headless.waitCursorShown());
  }
  EXPECT_FALSE(headless.waitCursorShown());
  EndWaitCursor();  // unmatched: ignored
  BeginWaitCursor();
  EXPECT_TRUE(headless.waitCursorShown());
  EndWaitCursor();
  EXPECT_FALSE(headless.waitCursorShown());
  EXPECT_EQ(transcriptOf([] { Beep(1000, 50); }), "[beep 1000 Hz 50 ms]\n");
}

}  // namespace
}  // namespace uitest
