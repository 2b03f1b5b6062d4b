#include "sdk/ui/CWnd.h"

#include <cwchar>
#include <string>

#include "host/ui/UiBackend.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/MessageBox.h"

using ui::detail::dataOf;
using ui::detail::WindowData;

namespace ui::detail {

CWnd*& focusedWindow() {
  static CWnd* focus = nullptr;
  return focus;
}

void forgetFocus(CWnd& window) {
  for (CWnd* w = focusedWindow(); w != nullptr; w = dataOf(*w).parent) {
    if (w == &window) {
      focusedWindow() = nullptr;
      return;
    }
  }
}

}  // namespace ui::detail

CWnd::CWnd() : data_(std::make_unique<WindowData>()) {
  data_->self = this;
  ui::detail::registerObject(this);
}

CWnd::~CWnd() {
  // A window object that goes away with its window still open: take the window down without calling
  // handlers, since the derived parts of this object no longer exist.
  if (data_ && data_->created) {
    while (!data_->children.empty()) {
      ui::detail::ChildSlot slot = std::move(data_->children.back());
      data_->children.pop_back();
      WindowData& child = dataOf(*slot.window);
      child.parent = nullptr;
      if (!slot.owned) {
        child.created = false;
        child.children.clear();
      }
    }
    ui::detail::forgetFocus(*this);
    host::ui::backend().windowDestroyed(*this);
    if (data_->parent != nullptr) {
      auto& siblings = dataOf(*data_->parent).children;
      for (auto it = siblings.begin(); it != siblings.end(); ++it) {
        if (it->window == this) {
          it->owned.release();  // this object is being destroyed already
          siblings.erase(it);
          break;
        }
      }
    }
  }
  ui::detail::unregisterObject(this);
}

HWND CWnd::GetSafeHwnd() const {
  return data_ && data_->created ? reinterpret_cast<HWND>(data_.get()) : nullptr;
}

bool IsWindow(HWND hwnd) { return ui::detail::isLiveHandle(hwnd); }

int CWnd::GetDlgCtrlID() const { return data_->id; }

CWnd* CWnd::GetParent() const { return data_->parent != nullptr ? data_->parent : data_->owner; }

CWnd* CWnd::GetDlgItem(int id) const {
  for (const auto& slot : data_->children) {
    if (dataOf(*slot.window).id == id && dataOf(*slot.window).kind != ui::ControlKind::Header) return slot.window;
  }
  for (const auto& slot : data_->children) {
    if (CWnd* found = slot.window->GetDlgItem(id)) return found;
  }
  return nullptr;
}

void CWnd::SetWindowText(const std::wstring& text) {
  if (!data_->created) return;
  data_->text = text;
  host::ui::backend().windowChanged(*this);
  if (data_->kind == ui::ControlKind::Edit) {
    // As the classic edit control: new text puts the caret to the start and is reported as a change.
    data_->selStart = data_->selEnd = 0;
    ui::detail::sendCommand(*this, EN_CHANGE);
  }
}

std::wstring CWnd::GetWindowText() const { return data_->text; }
void CWnd::GetWindowText(std::wstring& text) const { text = data_->text; }
int CWnd::GetWindowTextLength() const { return static_cast<int>(data_->text.size()); }

void CWnd::SetDlgItemText(int id, const std::wstring& text) {
  if (CWnd* item = GetDlgItem(id)) item->SetWindowText(text);
}

std::wstring CWnd::GetDlgItemText(int id) const {
  CWnd* item = GetDlgItem(id);
  return item != nullptr ? item->GetWindowText() : std::wstring();
}

void CWnd::SetDlgItemInt(int id, int value) { SetDlgItemText(id, std::to_wstring(value)); }

int CWnd::GetDlgItemInt(int id, bool* ok) const {
  const std::wstring text = GetDlgItemText(id);
  wchar_t* end = nullptr;
  const long value = std::wcstol(text.c_str(), &end, 10);
  const bool parsed = end != text.c_str() && *end == L'\0';
  if (ok != nullptr) *ok = parsed;
  return parsed ? static_cast<int>(value) : 0;
}

void CWnd::CheckDlgButton(int id, int check) {
  if (auto* button = dynamic_cast<CButton*>(GetDlgItem(id))) button->SetCheck(check);
}

int CWnd::IsDlgButtonChecked(int id) const {
  auto* button = dynamic_cast<CButton*>(GetDlgItem(id));
  return button != nullptr ? button->GetCheck() : BST_UNCHECKED;
}

bool CWnd::EnableWindow(bool enable) {
  const bool wasDisabled = !data_->enabled;
  if (data_->created && data_->enabled != enable) {
    data_->enabled = enable;
    if (!enable) ui::detail::forgetFocus(*this);
    host::ui::backend().windowChanged(*this);
  }
  return wasDisabled;
}

bool CWnd::IsWindowEnabled() const { return data_->created && data_->enabled; }

bool CWnd::ShowWindow(int show) {
  const bool wasVisible = data_->visible;
  if (data_->created) {
    data_->visible = show != SW_HIDE;
    host::ui::backend().windowChanged(*this);
  }
  return wasVisible;
}

bool CWnd::IsWindowVisible() const {
  for (const CWnd* w = this; w != nullptr; w = dataOf(*w).parent)
    if (!dataOf(*w).created || !dataOf(*w).visible) return false;
  return true;
}

unsigned CWnd::GetStyle() const { return data_->style; }

bool CWnd::ModifyStyle(unsigned remove, unsigned add) {
  const unsigned style = (data_->style & ~remove) | add;
  if (style == data_->style) return false;
  data_->style = style;
  if (data_->created) host::ui::backend().windowChanged(*this);
  return true;
}

void CWnd::GetWindowRect(CRect& rect) const { rect = data_->rect; }

void CWnd::GetClientRect(CRect& rect) const {
  CSize size(data_->rect.Width(), data_->rect.Height());
  if (data_->created) host::ui::backend().clientSize(*this, size);
  rect = CRect(0, 0, size.cx, size.cy);
}

void CWnd::MoveWindow(const CRect& rect, bool) {
  data_->rect = rect;
  if (data_->created) host::ui::backend().windowChanged(*this);
}

void CWnd::MapDialogRect(CRect& rect) const {
  const CWnd* dialog = this;
  while (dataOf(*dialog).kind != ui::ControlKind::Dialog && dataOf(*dialog).parent != nullptr)
    dialog = dataOf(*dialog).parent;
  const CSize base = host::ui::backend().dialogBaseUnits(dialog);
  rect = CRect(rect.left * base.cx / 4, rect.top * base.cy / 8, rect.right * base.cx / 4, rect.bottom * base.cy / 8);
}

int CWnd::GetTextWidth(const std::wstring& text) const { return host::ui::backend().textWidth(this, text); }

CWnd* CWnd::SetFocus() {
  CWnd* previous = ui::detail::focusedWindow();
  if (!data_->created || !data_->enabled || previous == this) return previous;
  ui::detail::focusedWindow() = this;
  if (ui::detail::isAlive(previous) && previous->GetSafeHwnd() != nullptr) previous->OnKillFocus(this);
  if (ui::detail::focusedWindow() == this) OnSetFocus(previous);
  return previous;
}

CWnd* CWnd::GetFocus() { return ui::detail::focusedWindow(); }

void CWnd::SetRedraw(bool redraw) {
  data_->redrawSuppressed = redraw ? 0 : 1;
  if (redraw && data_->created) host::ui::backend().windowChanged(*this);
}

void CWnd::Invalidate(bool) {
  if (data_->created && data_->redrawSuppressed == 0) host::ui::backend().windowChanged(*this);
}

void CWnd::UpdateWindow() { Invalidate(false); }

bool CWnd::DestroyWindow() { return ui::detail::destroyWindow(*this); }

bool CWnd::SubclassDlgItem(int id, CWnd* parent) {
  if (parent == nullptr || data_->created) return false;
  CWnd* existing = parent->GetDlgItem(id);
  if (existing == nullptr || existing == this) return false;
  return SubclassWindow(existing->GetSafeHwnd());
}

bool CWnd::SubclassWindow(HWND hwnd) {
  if (hwnd == nullptr || data_->created || !IsWindow(hwnd)) return false;
  WindowData* target = reinterpret_cast<WindowData*>(hwnd);
  CWnd* previous = target->self;
  // The window's state moves to this object; the framework's own object is left without a window.
  std::swap(data_, ui::detail::WindowAccess::dataSlot(*previous));
  data_->self = this;
  dataOf(*previous).self = previous;
  for (auto& slot : data_->children) dataOf(*slot.window).parent = this;
  if (ui::detail::focusedWindow() == previous) ui::detail::focusedWindow() = this;
  std::unique_ptr<CWnd> discarded;
  if (data_->parent != nullptr) {
    for (auto& slot : dataOf(*data_->parent).children) {
      if (slot.window == previous) {
        slot.window = this;
        discarded = std::move(slot.owned);
      }
    }
    for (auto& slot : dataOf(*data_->parent).children)
      if (dataOf(*slot.window).buddy == previous) dataOf(*slot.window).buddy = this;
  }
  PreSubclassWindow();
  return true;
}

bool CWnd::OnCommand(int, int) { return false; }
bool CWnd::OnNotify(ui::UiNotify&) { return false; }
bool CWnd::OnCommandReflect(int) { return false; }
bool CWnd::OnNotifyReflect(ui::UiNotify&) { return false; }
bool CWnd::PreTranslateKeyDown(CWnd&, unsigned, unsigned) { return false; }
void CWnd::PreSubclassWindow() {}
void CWnd::OnDestroy() {}
void CWnd::PostNcDestroy() {}

void CWnd::OnSetFocus(CWnd*) {
  if (data_->kind == ui::ControlKind::Edit) ui::detail::sendCommand(*this, EN_SETFOCUS);
}

void CWnd::OnKillFocus(CWnd*) {
  if (data_->kind == ui::ControlKind::Edit) ui::detail::sendCommand(*this, EN_KILLFOCUS);
}

bool CWnd::CreateControl(ui::ControlKind kind, const std::wstring& text, unsigned style, const CRect& rect,
                         CWnd* parent, int id) {
  if (data_->created || parent == nullptr || parent->GetSafeHwnd() == nullptr) return false;
  ui::detail::createWindow(*this, kind, id, text, style, rect, parent);
  data_->visible = (style & WS_VISIBLE) != 0;
  PreSubclassWindow();
  return true;
}
