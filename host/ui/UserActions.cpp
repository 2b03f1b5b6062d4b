#include "host/ui/UserActions.h"

#include <algorithm>
#include <map>

#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CComboBox.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/CSpinButtonCtrl.h"
#include "sdk/ui/MessageBox.h"

using ui::ControlKind;
using ui::detail::dataOf;

namespace host::ui {
namespace {

std::string withArticle(const std::string& word) {
  const bool vowel = !word.empty() && std::string("aeiou").find(word.front()) != std::string::npos;
  return (vowel ? "an " : "a ") + word;
}

// Checks that the user can reach `control` and that it is of one of `kinds`.
void requireUsable(const CWnd& control, std::initializer_list<const char*> kinds) {
  const std::string kind = kindWord(control);
  if (std::none_of(kinds.begin(), kinds.end(), [&](const char* k) { return kind == k; }))
    throw UserActionError(describe(control) + " is " + withArticle(kind) + ", not " + withArticle(*kinds.begin()));
  if (!control.IsWindowVisible()) throw UserActionError(describe(control) + " is hidden");
  if (!control.IsWindowEnabled()) throw UserActionError(describe(control) + " is disabled");
}

CWnd* focusOn(CWnd& control) {
  control.SetFocus();
  return &control;
}

}  // namespace

CDialog& findOpenDialog(int templateId) {
  const std::vector<CWnd*> dialogs = ::ui::detail::openDialogs();
  for (auto it = dialogs.rbegin(); it != dialogs.rend(); ++it)
    if (dataOf(**it).templateId == templateId) return static_cast<CDialog&>(**it);
  throw UserActionError("no dialog " + std::to_string(templateId) + " is open");
}

int& openedCount(int templateId) {
  static auto* counts = new std::map<int, int>();  // UI thread only
  return (*counts)[templateId];
}

int dialogsOpened(int templateId) { return openedCount(templateId); }
void noteDialogOpened(int templateId) { ++openedCount(templateId); }

CWnd& findControl(CDialog& dialog, int id) {
  CWnd* control = id == IDC_STATIC ? nullptr : dialog.GetDlgItem(id);
  if (control == nullptr)
    throw UserActionError("dialog " + std::to_string(dataOf(dialog).templateId) + " has no control " +
                          std::to_string(id));
  return *control;
}

std::string kindWord(const CWnd& window) {
  const auto& d = dataOf(window);
  switch (d.kind) {
    case ControlKind::Static:
      if ((d.style & 0x1F) == SS_ETCHEDHORZ) return "line";
      return (d.style & SS_NOTIFY) != 0 ? "link" : "static";
    case ControlKind::Edit: return "edit";
    case ControlKind::Button: return "button";
    case ControlKind::CheckBox: return "checkbox";
    case ControlKind::GroupBox: return "group";
    case ControlKind::UpDown: return "updown";
    case ControlKind::ListView: return "list";
    case ControlKind::ComboBox: return "combo";
    case ControlKind::Dialog: return "dialog";
    case ControlKind::Header: return "header";
    case ControlKind::ToolBar: return "toolbar";
    case ControlKind::Frame: return "frame";
  }
  return "window";
}

std::string describe(const CWnd& window) {
  const CWnd* top = ::ui::detail::topLevelOf(const_cast<CWnd&>(window));
  std::string text = "control " + std::to_string(window.GetDlgCtrlID());
  if (top != &window && dataOf(*top).kind == ControlKind::Dialog)
    text += " of dialog " + std::to_string(dataOf(*top).templateId);
  return text;
}

void typeText(CWnd& control, const std::wstring& text) {
  requireUsable(control, {"edit"});
  auto* edit = dynamic_cast<CEdit*>(&control);
  if (edit == nullptr || edit->IsReadOnly()) throw UserActionError(describe(control) + " is read-only");
  focusOn(control);
  if (!::ui::detail::isAlive(edit) || edit->GetSafeHwnd() == nullptr) return;
  edit->SetSel(0, -1);
  edit->ReplaceSel(text);
}

void clickButton(CWnd& control) {
  requireUsable(control, {"button", "checkbox", "link"});
  if (dataOf(control).kind == ControlKind::Static) {
    ::ui::detail::sendCommand(control, STN_CLICKED);  // a link takes no focus
    return;
  }
  focusOn(control);
  if (!::ui::detail::isAlive(&control) || control.GetSafeHwnd() == nullptr) return;
  auto& d = dataOf(control);
  if (d.kind == ControlKind::CheckBox && (d.style & 0xF) != BS_CHECKBOX) {
    if (auto* box = dynamic_cast<CButton*>(&control)) box->SetCheck(box->GetCheck() == BST_CHECKED ? 0 : 1);
  }
  ::ui::detail::sendCommand(control, BN_CLICKED);
}

void setCheck(CWnd& control, bool checked) {
  requireUsable(control, {"checkbox"});
  if ((dataOf(control).check == BST_CHECKED) != checked) clickButton(control);
}

void pressUpDown(CWnd& control, bool up) {
  requireUsable(control, {"updown"});
  auto& d = dataOf(control);
  // The upper arrow moves towards the upper end of the range, whichever way round the range is.
  const int towardsUpper = d.upper >= d.lower ? 1 : -1;
  ::ui::UiNotify notify;
  notify.code = UDN_DELTAPOS;
  notify.pos = d.pos;
  notify.delta = up ? towardsUpper : -towardsUpper;
  const long refused = ::ui::detail::sendNotify(control, notify);
  if (refused != 0 || !::ui::detail::isAlive(&control) || control.GetSafeHwnd() == nullptr) return;
  auto& after = dataOf(control);
  const int low = std::min(after.lower, after.upper);
  const int high = std::max(after.lower, after.upper);
  int pos = after.pos + notify.delta;
  if (pos < low) pos = (after.style & UDS_WRAP) != 0 ? high : low;
  if (pos > high) pos = (after.style & UDS_WRAP) != 0 ? low : high;
  if (auto* spin = dynamic_cast<CSpinButtonCtrl*>(&control)) spin->SetPos(pos);
}

void pressKey(CWnd& control, unsigned key, unsigned modifiers, wchar_t ch) {
  if (!control.IsWindowVisible()) throw UserActionError(describe(control) + " is hidden");
  if (!control.IsWindowEnabled()) throw UserActionError(describe(control) + " is disabled");
  focusOn(control);
  // The focused window and its parents may take the key first (an in-place editor takes Return and Escape).
  std::vector<CWnd*> chain;
  for (CWnd* w = &control; w != nullptr; w = dataOf(*w).parent) chain.push_back(w);
  for (CWnd* w : chain) {
    if (!::ui::detail::isAlive(w) || w->GetSafeHwnd() == nullptr) return;
    if (w->PreTranslateKeyDown(control, key, modifiers)) return;
  }
  CWnd* top = chain.back();
  if (dataOf(*top).kind == ControlKind::Dialog) {
    auto& dialog = static_cast<CDialog&>(*top);
    if (key == VK_ESCAPE) {
      dialog.OnCommand(IDCANCEL, BN_CLICKED);
      return;
    }
    if (key == VK_RETURN) {
      CWnd* button = dialog.GetDlgItem(dialog.GetDefID());
      if (button != nullptr && !button->IsWindowEnabled()) {
        MessageBeep(0);
        return;
      }
      dialog.OnCommand(dialog.GetDefID(), BN_CLICKED);
      return;
    }
    if (key == VK_TAB) {
      if (CWnd* next = ::ui::detail::nextTabControl(dialog, &control, (modifiers & MK_SHIFT) != 0)) next->SetFocus();
      return;
    }
  }
  control.OnKeyDown(key, modifiers);
  if (ch != 0 && ::ui::detail::isAlive(&control) && control.GetSafeHwnd() != nullptr) control.OnChar(ch);
}

void selectRows(CWnd& control, const std::vector<int>& rows) {
  requireUsable(control, {"list"});
  auto& list = dynamic_cast<CListCtrl&>(control);
  const int count = list.GetItemCount();
  for (int row : rows)
    if (row < 0 || row >= count)
      throw UserActionError(describe(control) + " has no row " + std::to_string(row) + " (it has " +
                            std::to_string(count) + " rows)");
  focusOn(control);
  for (int row = 0; row < count && ::ui::detail::isAlive(&list); ++row)
    if (std::find(rows.begin(), rows.end(), row) == rows.end() && list.GetItemState(row, LVIS_SELECTED) != 0)
      list.SetItemState(row, 0, LVIS_SELECTED | LVIS_FOCUSED);
  for (std::size_t i = 0; i < rows.size() && ::ui::detail::isAlive(&list); ++i) {
    const unsigned focus = i + 1 == rows.size() ? LVIS_FOCUSED : 0;
    list.SetItemState(rows[i], LVIS_SELECTED | focus, LVIS_SELECTED | LVIS_FOCUSED);
  }
}

namespace {

void requireColumn(CWnd& control, int column) {
  const int columns = dynamic_cast<CListCtrl&>(control).GetColumnCount();
  if (column < 0 || column >= columns)
    throw UserActionError(describe(control) + " has no column " + std::to_string(column) + " (it has " +
                          std::to_string(columns) + " columns)");
}

}  // namespace

void chooseEntry(CWnd& control, int index) {
  requireUsable(control, {"combo"});
  auto& combo = dynamic_cast<CComboBox&>(control);
  if (index < 0 || index >= combo.GetCount())
    throw UserActionError(describe(control) + " has no entry " + std::to_string(index) + " (it has " +
                          std::to_string(combo.GetCount()) + " entries)");
  focusOn(control);
  if (!::ui::detail::isAlive(&combo) || combo.GetSafeHwnd() == nullptr) return;
  combo.SetCurSel(index);
  ::ui::detail::sendCommand(control, CBN_SELCHANGE);
}

void clickHeader(CWnd& control, int column) {
  requireUsable(control, {"list"});
  requireColumn(control, column);
  ::ui::UiNotify notify;
  notify.code = LVN_COLUMNCLICK;
  notify.col = column;
  ::ui::detail::sendNotify(control, notify);
}

void resizeColumn(CWnd& control, int column, int width) {
  requireUsable(control, {"list"});
  requireColumn(control, column);
  dynamic_cast<CListCtrl&>(control).SetColumnWidth(column, width);
}

void rightClickCell(CWnd& control, int row, int column) {
  requireUsable(control, {"list"});
  requireColumn(control, column);
  const int count = dynamic_cast<CListCtrl&>(control).GetItemCount();
  if (row < -1 || row >= count)
    throw UserActionError(describe(control) + " has no row " + std::to_string(row) + " (it has " +
                          std::to_string(count) + " rows)");
  focusOn(control);
  ::ui::UiNotify notify;
  notify.code = NM_RCLICK;
  notify.row = row;
  notify.col = column;
  ::ui::detail::sendNotify(control, notify);
}

void pressToolbarButton(int id) {
  for (CWnd* bar : ::ui::detail::liveToolbars()) {
    const auto& buttons = dataOf(*bar).buttons;
    if (id == 0 || std::find(buttons.begin(), buttons.end(), id) == buttons.end()) continue;
    if (!bar->IsWindowVisible()) continue;
    CWnd* owner = dataOf(*bar).owner != nullptr ? dataOf(*bar).owner : bar->GetParent();
    if (bar->OnCommand(id, BN_CLICKED)) return;
    if (::ui::detail::isAlive(owner) && owner->GetSafeHwnd() != nullptr) owner->OnCommand(id, BN_CLICKED);
    return;
  }
  throw UserActionError("no toolbar has a button " + std::to_string(id));
}

}  // namespace host::ui
