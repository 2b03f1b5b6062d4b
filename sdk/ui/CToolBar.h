// Dockable toolbars in the host's main frame. A toolbar's buttons come from a toolbar resource; pressing one
// sends its command id to the toolbar's OnCommand(id, BN_CLICKED) and, when the toolbar does not take it, to
// its owner (SetOwner), else to the frame.
#pragma once

#include "sdk/ui/CWnd.h"

inline constexpr int AFX_IDW_TOOLBAR = 0xE800;
inline constexpr int AFX_IDW_DOCKBAR_TOP = 0xE81B;
inline constexpr unsigned CBRS_ALIGN_ANY = 0xF000;
inline constexpr unsigned TBSTYLE_FLAT = 0x0800;

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
