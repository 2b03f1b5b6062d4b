// Dockable toolbars in the host's main frame. A toolbar's buttons come from a toolbar resource (command ids and
// one PNG image per button, see ui::ToolbarTemplate); pressing one sends its command id to the toolbar's
// OnCommand(id, BN_CLICKED) and, when the toolbar does not take it, to its owner (SetOwner, or the message
// TB_SETPARENT), else to the frame.
//
// For a window backend: every live toolbar is a window of kind ui::ControlKind::ToolBar (windowCreated tells
// of it); GetToolbarResource() gives the resource it was loaded from, with the images to draw on its buttons
// and the tooltips in the string table under each command id ("status text\ntooltip"). A click on a button
// goes through host::ui::pressToolbarButton(id), as the script line "@toolbar ID" does.
#pragma once

#include "sdk/ui/CWnd.h"

inline constexpr int AFX_IDW_TOOLBAR = 0xE800;
inline constexpr int AFX_IDW_DOCKBAR_TOP = 0xE81B;
inline constexpr unsigned CBRS_ALIGN_ANY = 0xF000;
inline constexpr unsigned TBSTYLE_FLAT = 0x0800;
inline constexpr unsigned TBSTYLE_TOOLTIPS = 0x0100;
inline constexpr unsigned CBRS_ALIGN_TOP = 0x2000;
inline constexpr unsigned CBRS_BORDER_BOTTOM = 0x0800;
inline constexpr unsigned CBRS_TOOLTIPS = 0x0010;
inline constexpr unsigned CBRS_FLYBY = 0x0020;
inline constexpr unsigned CBRS_SIZE_DYNAMIC = 0x0004;
// Sets the window that receives the toolbar's button commands: wParam is its handle (0: none); the answer
// is the handle of the one before.
inline constexpr unsigned TB_SETPARENT = 0x0425;

class CToolBar : public CWnd {
 public:
  bool CreateEx(CWnd* parent, unsigned controlStyle = TBSTYLE_FLAT, unsigned style = WS_CHILD | WS_VISIBLE,
                CRect borders = {}, int id = AFX_IDW_TOOLBAR);
  // Takes the buttons of toolbar resource `id`; false when no resource module has it.
  bool LoadToolBar(int id);
  void EnableDocking(unsigned dockStyle);
  void SetOwner(CWnd* owner);
  CWnd* GetOwner() const;
  int GetCount() const;
  int GetItemID(int index) const;
  // The resource of the last successful LoadToolBar; null before.
  const ui::ToolbarTemplate* GetToolbarResource() const;

  long WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
};

class CFrameWnd : public CWnd {
 public:
  void EnableDocking(unsigned dockStyle);
  void DockControlBar(CToolBar* bar, int dockBarId = 0);
  void ShowControlBar(CToolBar* bar, bool show, bool delay);
  void RecalcLayout();
};

// The host's main frame window: the parent of the module's dialogs and toolbar.
CFrameWnd* AfxGetMainWnd();
