#include "sdk/ui/CToolBar.h"

#include "host/ui/WindowData.h"

using ui::detail::dataOf;

bool CToolBar::CreateEx(CWnd* parent, unsigned, unsigned style, CRect, int id) {
  if (GetSafeHwnd() != nullptr) return false;
  ui::detail::createWindow(*this, ui::ControlKind::ToolBar, id, {}, style, CRect(), parent);
  dataOf(*this).visible = (style & WS_VISIBLE) != 0;
  return true;
}

bool CToolBar::LoadToolBar(int id) {
  const ui::ToolbarTemplate* bar = ui::findToolbarTemplate(id);
  if (bar == nullptr || GetSafeHwnd() == nullptr) return false;
  dataOf(*this).buttons = bar->buttons;
  dataOf(*this).toolbar = *bar;
  Invalidate();
  return true;
}

const ui::ToolbarTemplate* CToolBar::GetToolbarResource() const {
  return GetSafeHwnd() != nullptr && dataOf(*this).toolbar.id != 0 ? &dataOf(*this).toolbar : nullptr;
}

long CToolBar::WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  if (message != TB_SETPARENT) return CWnd::WindowProc(message, wParam, lParam);
  CWnd* before = dataOf(*this).owner;
  dataOf(*this).owner = CWnd::FromHandle(reinterpret_cast<HWND>(wParam));
  return static_cast<long>(reinterpret_cast<std::intptr_t>(before != nullptr ? before->GetSafeHwnd() : nullptr));
}

void CToolBar::EnableDocking(unsigned) {}
void CToolBar::SetOwner(CWnd* owner) { dataOf(*this).owner = owner; }
CWnd* CToolBar::GetOwner() const { return dataOf(*this).owner != nullptr ? dataOf(*this).owner : GetParent(); }
int CToolBar::GetCount() const { return static_cast<int>(dataOf(*this).buttons.size()); }

int CToolBar::GetItemID(int index) const {
  const auto& buttons = dataOf(*this).buttons;
  return index >= 0 && index < static_cast<int>(buttons.size()) ? buttons[index] : 0;
}

void CFrameWnd::EnableDocking(unsigned) {}

void CFrameWnd::DockControlBar(CToolBar* bar, int) {
  if (bar != nullptr) bar->ShowWindow(SW_SHOW);
}

void CFrameWnd::ShowControlBar(CToolBar* bar, bool show, bool) {
  if (bar != nullptr) bar->ShowWindow(show ? SW_SHOW : SW_HIDE);
}

void CFrameWnd::RecalcLayout() { Invalidate(); }

CFrameWnd* AfxGetMainWnd() {
  static CFrameWnd* frame = [] {
    auto* created = new CFrameWnd();  // lives as long as the host
    ui::detail::createWindow(*created, ui::ControlKind::Frame, 0, L"cadhost", WS_VISIBLE, CRect(0, 0, 1024, 768),
                             nullptr);
    return created;
  }();
  return frame;
}
