// Buttons, edits, up-down controls and keys that controls handle themselves.
#include <algorithm>
#include <string>

#include "host/ui/UiBackend.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/CSpinButtonCtrl.h"

using ui::detail::dataOf;
using ui::detail::WindowData;

int CButton::GetCheck() const { return dataOf(*this).check; }

void CButton::SetCheck(int check) {
  WindowData& d = dataOf(*this);
  if (d.check == check) return;
  d.check = check;
  if (d.created) host::ui::backend().windowChanged(*this);
}

bool CEdit::Create(unsigned style, const CRect& rect, CWnd* parent, int id) {
  return CreateControl(ui::ControlKind::Edit, {}, style | WS_CHILD, rect, parent, id);
}

void CEdit::GetSel(int& start, int& end) const {
  start = dataOf(*this).selStart;
  end = dataOf(*this).selEnd;
}

void CEdit::SetSel(int start, int end, bool) {
  WindowData& d = dataOf(*this);
  const int length = static_cast<int>(d.text.size());
  if (start < 0) {
    // The classic "remove the selection": the caret stays where the selection ended.
    start = end = std::clamp(d.selEnd, 0, length);
  }
  if (end < 0 || end > length) end = length;
  start = std::min(start, length);
  d.selStart = std::min(start, end);
  d.selEnd = std::max(start, end);
  if (d.created) host::ui::backend().windowChanged(*this);
}

void CEdit::ReplaceSel(const std::wstring& text, bool) {
  WindowData& d = dataOf(*this);
  if (!d.created) return;
  std::wstring inserted = text;
  if (d.limit > 0) {
    const int room = d.limit - (static_cast<int>(d.text.size()) - (d.selEnd - d.selStart));
    inserted.resize(static_cast<std::size_t>(std::clamp(room, 0, static_cast<int>(inserted.size()))));
  }
  d.text.replace(static_cast<std::size_t>(d.selStart), static_cast<std::size_t>(d.selEnd - d.selStart), inserted);
  d.selStart = d.selEnd = d.selStart + static_cast<int>(inserted.size());
  host::ui::backend().windowChanged(*this);
  ui::detail::sendCommand(*this, EN_CHANGE);
}

bool CEdit::SetReadOnly(bool readOnly) {
  ModifyStyle(readOnly ? 0 : ES_READONLY, readOnly ? ES_READONLY : 0);
  return true;
}

bool CEdit::IsReadOnly() const { return (GetStyle() & ES_READONLY) != 0; }
void CEdit::SetLimitText(int maxChars) { dataOf(*this).limit = std::max(0, maxChars); }
int CEdit::GetLimitText() const { return dataOf(*this).limit; }

void CSpinButtonCtrl::SetRange(int lower, int upper) {
  dataOf(*this).lower = lower;
  dataOf(*this).upper = upper;
}

void CSpinButtonCtrl::GetRange(int& lower, int& upper) const {
  lower = dataOf(*this).lower;
  upper = dataOf(*this).upper;
}

int CSpinButtonCtrl::SetPos(int pos) {
  WindowData& d = dataOf(*this);
  const int previous = d.pos;
  d.pos = std::clamp(pos, std::min(d.lower, d.upper), std::max(d.lower, d.upper));
  if ((d.style & UDS_SETBUDDYINT) != 0 && ui::detail::isAlive(d.buddy)) d.buddy->SetWindowText(std::to_wstring(d.pos));
  return previous;
}

int CSpinButtonCtrl::GetPos() const { return dataOf(*this).pos; }

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* buddy) {
  CWnd* previous = dataOf(*this).buddy;
  dataOf(*this).buddy = buddy;
  return previous;
}

CWnd* CSpinButtonCtrl::GetBuddy() const { return dataOf(*this).buddy; }

namespace {

void editKeyDown(CEdit& edit, unsigned key) {
  WindowData& d = dataOf(edit);
  const int length = static_cast<int>(d.text.size());
  switch (key) {
    case VK_LEFT: {
      const int caret = d.selStart == d.selEnd ? std::max(0, d.selStart - 1) : d.selStart;
      edit.SetSel(caret, caret);
      return;
    }
    case VK_HOME: edit.SetSel(0, 0); return;
    case VK_END: edit.SetSel(length, length); return;
    case VK_RIGHT: {
      const int caret = std::min(length, d.selEnd + (d.selStart == d.selEnd ? 1 : 0));
      edit.SetSel(caret, caret);
      return;
    }
    case VK_DELETE:
    case VK_BACK:
      if (edit.IsReadOnly()) return;
      if (d.selStart == d.selEnd) {
        if (key == VK_DELETE && d.selEnd < length) d.selEnd += 1;
        if (key == VK_BACK && d.selStart > 0) d.selStart -= 1;
        if (d.selStart == d.selEnd) return;
      }
      edit.ReplaceSel({});
      return;
    default: return;
  }
}

}  // namespace

void CWnd::OnKeyDown(unsigned key, unsigned modifiers) {
  if (auto* edit = dynamic_cast<CEdit*>(this); edit != nullptr && dataOf(*this).kind == ui::ControlKind::Edit) {
    editKeyDown(*edit, key);
  } else if (dataOf(*this).kind == ui::ControlKind::ListView) {
    ui::UiNotify notify;
    notify.code = LVN_KEYDOWN;
    notify.key = key;
    notify.modifiers = modifiers;
    ui::detail::sendNotify(*this, notify);
  } else if (const auto kind = dataOf(*this).kind;
             key == VK_SPACE && (kind == ui::ControlKind::Button || kind == ui::ControlKind::CheckBox)) {
    host::ui::clickButton(*this);  // the space bar presses the focused button
  }
}

void CWnd::OnChar(wchar_t ch) {
  auto* edit = dynamic_cast<CEdit*>(this);
  if (edit == nullptr || dataOf(*this).kind != ui::ControlKind::Edit || edit->IsReadOnly() || ch < L' ') return;
  edit->ReplaceSel(std::wstring(1, ch));
}
