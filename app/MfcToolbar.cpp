#include "app/MfcToolbar.h"

#include "app/CResourceDll.h"
#include "app/CViraCadtoolsV10App.h"
#include "app/SendCommandToHost.h"
#include "app/ViraResourceIds.h"
#include "sdk/AcEd.h"
#include "sdk/AcFrame.h"

#include <cstdint>
#include <new>

namespace {

MfcToolbar* gToolbar = nullptr;

// Child, visible, aligned at the top with a bottom border, tooltips, fly-by status text, dynamic size.
constexpr unsigned kToolbarStyle =
    WS_CHILD | WS_VISIBLE | CBRS_ALIGN_TOP | CBRS_BORDER_BOTTOM | CBRS_TOOLTIPS | CBRS_FLYBY | CBRS_SIZE_DYNAMIC;

void dropToolbar(const wchar_t* alert) {
  acedAlert(alert);
  gToolbar->DestroyWindow();
  delete gToolbar;
  gToolbar = nullptr;
}

}  // namespace

MfcToolbar* ViraToolbar() { return gToolbar; }

void MfcToolbar::SetOwner(CWnd* owner) {
  SendMessage(TB_SETPARENT, reinterpret_cast<std::uintptr_t>(owner != nullptr ? owner->GetSafeHwnd() : nullptr));
}

bool MfcToolbar::OnCommand(int id, int) {
  const wchar_t* command = id == ID_VIRA_COORD_DEF ? L"_ViraCoordDef\n" : id == ID_VIRA_PT_PICK ? L"_ViraPtPick\n"
                                                                                               : nullptr;
  if (command == nullptr) return false;
  CancelHostCommand();
  SendCommandToHost(command);
  return true;
}

void ViraCreateToolbar() {
  if (gToolbar != nullptr) return;  // one toolbar per loaded module
  // The toolbar resource of the chosen language (the module's own when there is none).
  CResourceDll resources;
  gToolbar = new (std::nothrow) MfcToolbar;
  if (gToolbar == nullptr) {
    acedAlert(L"Impossible to create VIRA cadtools toolbar object.");
    return;
  }
  auto* frame = dynamic_cast<CFrameWnd*>(acedGetAcadFrame());
  if (frame != nullptr) frame->EnableDocking(CBRS_ALIGN_ANY);
  if (frame == nullptr || !gToolbar->CreateEx(frame, TBSTYLE_FLAT, kToolbarStyle, CRect(), AFX_IDW_TOOLBAR)) {
    dropToolbar(L"Impossible to create VIRA cadtools toolbar.");
    return;
  }
  if (!gToolbar->LoadToolBar(IDR_VIRA_TOOLBAR)) {
    dropToolbar(L"Impossible to load VIRA cadtools toolbar.");
    return;
  }
  gToolbar->EnableDocking(CBRS_ALIGN_ANY);
  gToolbar->SetWindowText(L"VIRA cadtools");
  // The buttons' commands come to the toolbar itself, not to the host's frame.
  gToolbar->SetOwner(gToolbar);
  frame->DockControlBar(gToolbar, AFX_IDW_DOCKBAR_TOP);
  frame->ShowControlBar(gToolbar, true, true);
}

void ViraDestroyToolbar() {
  if (gToolbar != nullptr) gToolbar->DestroyWindow();
  delete gToolbar;
  gToolbar = nullptr;
}
