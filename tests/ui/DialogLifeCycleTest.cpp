#include <gmock/gmock.h>

#include "UiTestDialog.h"
#include "host/headless/ScriptRunner.h"
#include "host/ui/UserActions.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"

using ::testing::ElementsAre;

namespace uitest {
namespace {

TEST_F(UiTest, ModelessDialogRunsItsHandlersInOrderAndDeletesItselfAfterItsWindowIsGone) {
  std::vector<std::string> log;
  auto* dialog = new TestDialog(&log);
  dialog->modeless = true;
  ASSERT_TRUE(dialog->Create(kDialog));
  EXPECT_NE(dialog->GetSafeHwnd(), nullptr);
  EXPECT_FALSE(dialog->IsModal());
  // OnInitDialog wrote the member into the edit; the first control that takes the focus has it.
  EXPECT_EQ(dialog->GetDlgItemText(kEdit), L"7");
  EXPECT_EQ(CWnd::GetFocus(), dialog->GetDlgItem(kEdit));
  const HWND hwnd = dialog->GetSafeHwnd();

  run("@dialog 900 set 10 A12");
  run("@dialog 900 check 12 1");
  run("@dialog 900 click 15");
  run("@dialog 900 click 1");
  // Filling the edit in OnInitDialog already reports a change, as the classic edit control does.
  EXPECT_THAT(log, ElementsAre("init", "command 10/768", "command 10/768", "command 12/0", "command 15/0",
                               "command 1/0", "ok", "destroy", "gone", "deleted"));
  EXPECT_FALSE(IsWindow(hwnd));
  EXPECT_EQ(fail("@dialog 900 dump"), "no dialog 900 is open");
}

TEST_F(UiTest, ModelessEndDialogOnlyHidesAndAMissingTemplateIsRefused) {
  TestDialog dialog;
  EXPECT_FALSE(dialog.Create(999));
  EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
  ASSERT_TRUE(dialog.Create(kDialog));
  dialog.EndDialog(IDOK);
  EXPECT_NE(dialog.GetSafeHwnd(), nullptr);
  EXPECT_FALSE(dialog.IsWindowVisible());
  EXPECT_EQ(fail("@dialog 900 click 1"), "control 1 of dialog 900 is hidden");
  EXPECT_TRUE(dialog.DestroyWindow());
  EXPECT_FALSE(dialog.DestroyWindow());
  TestDialog missing;
  EXPECT_EQ(CDialog(999).DoModal(), -1);
}

TEST_F(UiTest, DialogObjectDestroyedWithItsWindowOpenTakesTheWindowWithIt) {
  HWND hwnd = nullptr;
  {
    TestDialog dialog;
    ASSERT_TRUE(dialog.Create(kDialog));
    hwnd = dialog.GetSafeHwnd();
    CEdit subclassed;
    ASSERT_TRUE(subclassed.SubclassDlgItem(kEdit, &dialog));
  }
  EXPECT_FALSE(IsWindow(hwnd));
  EXPECT_EQ(fail("@dialog 900 dump"), "no dialog 900 is open");
}

// Modal dialogs take the script's lines until they close, through the real script runner.
struct ModalRun {
  static inline std::vector<std::string>* log = nullptr;
  static inline int result = 0;
  static inline std::wstring number;
  static void command() {
    TestDialog dialog(log);
    result = dialog.DoModal();
    number = dialog.nextNumber;
  }
};

class ModalDialogTest : public UiTest {
 protected:
  void SetUp() override {
    UiTest::SetUp();
    ModalRun::log = &log_;
    ModalRun::result = 0;
    stack()->addCommand(L"UITEST", L"UiModal", L"UiModal", 0, &ModalRun::command);
  }
  void TearDown() override {
    stack()->removeGroup(L"UITEST");
    UiTest::TearDown();
  }
  static AcEdCommandStack* stack() {
    return static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS"));
  }
  bool runScript(std::vector<std::string> lines, std::string& error) {
    host::headless::ScriptRunner runner(std::move(lines), "modal");
    bool ok = false;
    transcript_ = transcriptOf([&] { ok = runner.run(error); });
    return ok;
  }
  std::vector<std::string> log_;
  std::string transcript_;
};

TEST_F(ModalDialogTest, OkEndsTheLoopWithTheValuesExchanged) {
  std::string error;
  ASSERT_TRUE(runScript({"UiModal", "@dialog 900 set 10 P010", "@dialog 900 check 12 1", "@dialog 900 click 1",
                         "@dialog 900 dump"},
                        error) == false);
  // The dialog is gone once OK ended it, so the line after it fails and names itself.
  EXPECT_EQ(error, "modal:5: no dialog 900 is open");
  EXPECT_EQ(ModalRun::result, IDOK);
  EXPECT_EQ(ModalRun::number, L"P010");
  EXPECT_THAT(log_, ElementsAre("init", "command 10/768", "command 10/768", "command 12/0", "command 1/0", "ok",
                                "destroy", "gone", "deleted"));
}

TEST_F(ModalDialogTest, EscapeEnterAndTheEndOfTheScriptCloseTheDialog) {
  std::string error;
  ASSERT_TRUE(runScript({"UiModal", "@esc"}, error)) << error;
  EXPECT_EQ(ModalRun::result, IDCANCEL);
  ASSERT_TRUE(runScript({"UiModal", ""}, error)) << error;  // Enter presses the default button
  EXPECT_EQ(ModalRun::result, IDOK);
  ASSERT_TRUE(runScript({"UiModal"}, error)) << error;
  EXPECT_EQ(ModalRun::result, IDCANCEL);
}

TEST_F(ModalDialogTest, CommandLineTextWhileTheDialogIsOpenStopsTheRun) {
  std::string error;
  EXPECT_FALSE(runScript({"UiModal", "@dialog 900 set 10 5", "10,20"}, error));
  EXPECT_EQ(error, "modal:3: dialog 900 is open; \"10,20\" cannot be typed at the command line now");
  EXPECT_FALSE(runScript({"UiModal", "@dialog 900 set 99 5"}, error));
  EXPECT_EQ(error, "modal:2: dialog 900 has no control 99");
  EXPECT_EQ(fail("@dialog 900 dump"), "no dialog 900 is open");
}

}  // namespace
}  // namespace uitest
