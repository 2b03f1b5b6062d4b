// A small dialog with every control kind, its resources and a fixture that registers them, for the tests of
// the dialog framework.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/headless/UiHeadless.h"
#include "host/headless/UiScript.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CDialog.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/CSpinButtonCtrl.h"
#include "sdk/ui/Resources.h"

namespace uitest {

enum : int {
  kDialog = 900,
  kEdit = 10,
  kReadOnly = 11,
  kCheck = 12,
  kSpin = 13,
  kList = 14,
  kSave = 15,
  kMenu = 950,
  kToolbar = 960,
};

inline ui::ResourceModule makeResources() {
  using ui::ControlKind;
  ui::ResourceModule res;
  res.name = L"test";
  ui::DialogTemplate form;
  form.id = kDialog;
  form.title = L"Testdialog";
  form.rect = CRect(0, 0, 200, 120);
  form.controls = {
      {IDC_STATIC, ControlKind::Static, L"Nächste Nummer:", 0, CRect(5, 5, 60, 13)},
      {kEdit, ControlKind::Edit, L"1", ES_AUTOHSCROLL, CRect(65, 5, 120, 17)},
      {kReadOnly, ControlKind::Edit, L"", ES_READONLY, CRect(65, 20, 120, 32)},
      {kCheck, ControlKind::CheckBox, L"Skalieren", BS_AUTOCHECKBOX, CRect(5, 35, 100, 45)},
      {kSpin, ControlKind::UpDown, L"", UDS_ARROWKEYS, CRect(120, 5, 130, 17)},
      {IDC_STATIC, ControlKind::Static, L"", SS_ETCHEDHORZ, CRect(5, 48, 195, 49)},
      {kList, ControlKind::ListView, L"", LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, CRect(5, 50, 195, 100)},
      {kSave, ControlKind::Button, L"Speichern als...", 0, CRect(5, 102, 60, 116)},
      {IDCANCEL, ControlKind::Button, L"Abbrechen", 0, CRect(80, 102, 130, 116)},
      {IDOK, ControlKind::Button, L"OK", BS_DEFPUSHBUTTON, CRect(140, 102, 195, 116)},
  };
  res.dialogs[kDialog] = form;
  res.strings[1] = L"Zeile eins\nZeile zwei";
  ui::MenuTemplate menu;
  menu.id = kMenu;
  menu.items = {{0, L"popup", MF_STRING, {{3, L"Spalte aufsteigend sortieren"}, {4, L"Spalte absteigend sortieren"},
                                          {0, L"", MF_SEPARATOR}, {7, L"Löschen", MF_GRAYED}}}};
  res.menus[kMenu] = menu;
  res.toolbars[kToolbar] = ui::ToolbarTemplate{kToolbar, {40001, 0, 40002}};
  return res;
}

// Registers the test resources for one test and leaves the headless backend clean.
class UiTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resources_ = makeResources();
    ui::registerResourceModule(&resources_);
    AfxSetResourceHandle(&resources_);
    host::headless::HeadlessUi::instance().reset();
  }
  void TearDown() override {
    host::headless::HeadlessUi::instance().reset();
    ui::unregisterResourceModule(&resources_);
  }

  // Runs a script line that must succeed.
  static void run(const std::string& line) {
    std::string error;
    ASSERT_TRUE(host::headless::runUiScriptLine(line, error)) << line << ": " << error;
  }
  // Runs a script line that must fail, and returns its message.
  static std::string fail(const std::string& line) {
    std::string error;
    EXPECT_FALSE(host::headless::runUiScriptLine(line, error)) << line;
    return error;
  }
  // What `action` writes to the transcript.
  template <typename Action>
  static std::string transcriptOf(Action action) {
    ::testing::internal::CaptureStdout();
    action();
    return ::testing::internal::GetCapturedStdout();
  }

  ui::ResourceModule resources_;
};

// The test dialog: records what happens to it, and keeps the next number in a member through DDX.
class TestDialog : public CDialog {
 public:
  explicit TestDialog(std::vector<std::string>* log = nullptr) : CDialog(kDialog), log_(log) {}
  ~TestDialog() override { note("deleted"); }

  bool OnInitDialog() override {
    note("init");
    return CDialog::OnInitDialog();
  }
  void DoDataExchange(CDataExchange* dx) override {
    DDX_Text(dx, kEdit, nextNumber);
    DDX_Check(dx, kCheck, scale);
  }
  bool OnCommand(int id, int code) override {
    if (code == BN_CLICKED || code == EN_CHANGE) note("command " + std::to_string(id) + "/" + std::to_string(code));
    return CDialog::OnCommand(id, code);
  }
  bool OnNotify(ui::UiNotify& n) override {
    if (n.code == UDN_DELTAPOS) {
      note("delta " + std::to_string(n.delta));
      n.result = refuseSpin ? 1 : 0;
      return true;
    }
    return false;
  }
  void OnOK() override {
    note("ok");
    if (modeless) {
      UpdateData(true);
      DestroyWindow();
    } else {
      CDialog::OnOK();
    }
  }
  void OnCancel() override {
    note("cancel");
    if (modeless) {
      DestroyWindow();
    } else {
      CDialog::OnCancel();
    }
  }
  void OnDestroy() override { note("destroy"); }
  void PostNcDestroy() override {
    note("gone");
    if (modeless) delete this;
  }

  void note(const std::string& what) {
    if (log_ != nullptr) log_->push_back(what);
  }

  std::wstring nextNumber = L"7";
  int scale = 0;
  bool modeless = false;
  bool refuseSpin = false;

 private:
  std::vector<std::string>* log_;
};

}  // namespace uitest
