// A language library for the tests: English resources for the test dialog.
#include "sdk/ui/Resources.h"

extern "C" __attribute__((visibility("default"))) const ui::ResourceModule* UiResourceModule() {
  static const ui::ResourceModule english = [] {
    ui::ResourceModule res;
    res.name = L"ui_test_language";
    ui::DialogTemplate form;
    form.id = 900;
    form.title = L"Test dialog";
    form.rect = CRect(0, 0, 100, 50);
    form.controls = {{1, ui::ControlKind::Button, L"OK", BS_DEFPUSHBUTTON, CRect(40, 30, 90, 44)}};
    res.dialogs[900] = form;
    res.strings[2] = L"Delete Selected Data?";
    res.version[L"FileVersion"] = L"10.0.0.1";
    return res;
  }();
  return &english;
}
