// The widgets of the framework's controls: how each follows the framework's state, and how what the user does
// with it becomes the framework's user action.
#include "host/gui/MainFrame.h"
#include "host/gui/WidgetKeys.h"
#include "host/gui/WxBackend.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CHeaderCtrl.h"
#include "sdk/ui/CListCtrl.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/listctrl.h>
#include <wx/spinbutt.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <algorithm>

using ui::ControlKind;
using ::ui::detail::dataOf;

namespace host::gui {
namespace {

// Lists longer than this keep their selection in the framework only; the widget shows the focused row.
constexpr int kMirroredSelectionRows = 20000;

// A template gives its up-down control the narrow strip of the classic arrows beside an edit. The toolkit's
// spin buttons need more room than that to show both arrows: they get their own size, at the strip's left
// edge and centred on its height, so that they stand beside the edit they step.
wxRect upDownPlace(const CRect& strip, const wxWindow& widget) {
  const wxSize natural = widget.GetBestSize();
  const int width = std::max(strip.Width(), natural.x);
  const int height = std::max(strip.Height(), natural.y);
  return wxRect(strip.left, strip.top + (strip.Height() - height) / 2, std::max(1, width), std::max(1, height));
}

}  // namespace

void WxBackend::sync(CWnd& window, wxWindow& widget) {
  const auto& d = dataOf(window);
  ++syncing_;
  if (d.kind != ControlKind::Dialog) {
    const wxRect r = d.kind == ControlKind::UpDown ? upDownPlace(d.rect, widget)
                                                   : wxRect(d.rect.left, d.rect.top, std::max(1, d.rect.Width()),
                                                            std::max(1, d.rect.Height()));
    if (widget.GetRect() != r) widget.SetSize(r);
    if (widget.IsShown() != d.visible) widget.Show(d.visible);
  } else {
    if (widget.GetLabel() != wxString(d.text)) widget.SetLabel(d.text);
    // A modeless dialog that ends is hidden; it shows again when the module shows it.
    if (!d.visible && widget.IsShown()) widget.Hide();
    if (d.visible && !widget.IsShown() && !d.modal) widget.Show();
  }
  if (widget.IsEnabled() != d.enabled) widget.Enable(d.enabled);
  switch (d.kind) {
    case ControlKind::Static:
      if (auto* label = dynamic_cast<wxStaticText*>(&widget)) {
        // Texts of several lines break at the control's width. A one-line label keeps its line whole even where
        // the screen font is wider than the one the template was laid out for.
        const bool lines = d.rect.Height() >= 2 * label->GetCharHeight();
        if (label->GetLabel() != d.text) {
          label->SetLabel(d.text);
          if (lines) label->Wrap(d.rect.Width());
        }
        const int needed = label->GetTextExtent(d.text).x + 2;
        if (!lines && needed > d.rect.Width()) label->SetSize(needed, std::max(1, d.rect.Height()));
      }
      break;
    case ControlKind::GroupBox:
    case ControlKind::Button:
      if (widget.GetLabel() != wxString(d.text)) widget.SetLabel(d.text);
      break;
    case ControlKind::CheckBox:
      if (auto* box = dynamic_cast<wxCheckBox*>(&widget)) {
        if (box->GetLabel() != wxString(d.text)) box->SetLabel(d.text);
        if (box->GetValue() != (d.check == BST_CHECKED)) box->SetValue(d.check == BST_CHECKED);
      }
      break;
    case ControlKind::Edit:
      if (auto* edit = dynamic_cast<wxTextCtrl*>(&widget)) {
        if (edit->GetValue() != wxString(d.text)) edit->ChangeValue(d.text);
        edit->SetEditable((d.style & ES_READONLY) == 0);
      }
      break;
    case ControlKind::ComboBox:
      if (auto* choice = dynamic_cast<wxChoice*>(&widget)) {
        wxArrayString items;
        for (const std::wstring& c : d.choices) items.Add(c);
        if (choice->GetStrings() != items) choice->Set(items);
        if (choice->GetSelection() != d.chosen) choice->SetSelection(d.chosen);
      }
      break;
    case ControlKind::ListView: syncList(window, widget); break;
    default: break;
  }
  --syncing_;
}

void WxBackend::syncList(CWnd& window, wxWindow& widget) {
  auto* list = dynamic_cast<wxListCtrl*>(&widget);
  auto* framework = dynamic_cast<CListCtrl*>(&window);
  if (list == nullptr || framework == nullptr) return;
  const CHeaderCtrl* header = framework->GetHeaderCtrl();
  const int columns = framework->GetColumnCount();
  while (list->GetColumnCount() > columns) list->DeleteColumn(list->GetColumnCount() - 1);
  for (int c = 0; c < columns; ++c) {
    const std::wstring text = header != nullptr ? header->GetItemText(c) : std::wstring();
    const int format = framework->GetColumnFormat(c) == LVCFMT_RIGHT ? wxLIST_FORMAT_RIGHT : wxLIST_FORMAT_LEFT;
    if (c >= list->GetColumnCount()) {
      list->AppendColumn(text, static_cast<wxListColumnFormat>(format), framework->GetColumnWidth(c) + kListTextMargins);
      continue;
    }
    wxListItem item;
    item.SetMask(wxLIST_MASK_TEXT | wxLIST_MASK_FORMAT | wxLIST_MASK_WIDTH);
    list->GetColumn(c, item);
    if (item.GetText() != wxString(text) || item.GetWidth() != framework->GetColumnWidth(c) + kListTextMargins) {
      item.SetText(text);
      item.SetWidth(framework->GetColumnWidth(c) + kListTextMargins);
      item.SetAlign(static_cast<wxListColumnFormat>(format));
      list->SetColumn(c, item);
    }
  }
  if (header != nullptr) {
    int sorted = -1;
    for (int c = 0; c < columns; ++c)
      if (header->GetSortMark(c) != 0) sorted = c;
    if (sorted < 0)
      list->RemoveSortIndicator();
    else
      list->ShowSortIndicator(sorted, header->GetSortMark(sorted) == 1);
  }
  const int rows = framework->GetItemCount();
  if (list->GetItemCount() != rows) list->SetItemCount(rows);
  if (rows <= kMirroredSelectionRows) {
    for (int row = 0; row < rows; ++row) {
      const unsigned want = framework->GetItemState(row, LVIS_SELECTED | LVIS_FOCUSED);
      const long have = list->GetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
      const long wanted = ((want & LVIS_SELECTED) != 0 ? wxLIST_STATE_SELECTED : 0) |
                          ((want & LVIS_FOCUSED) != 0 ? wxLIST_STATE_FOCUSED : 0);
      if (have != wanted) list->SetItemState(row, wanted, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
    }
  }
  list->Refresh();
}

void WxBackend::bindEvents(CWnd& window, wxWindow& widget) {
  const auto kind = dataOf(window).kind;
  // A module class may take the window over (subclassing) after the widget was made: handlers find the object
  // that owns the window now through its handle, and check that it still is the one this widget shows.
  const HWND handle = window.GetSafeHwnd();
  auto current = [this, handle, &widget]() -> CWnd* {
    if (!::ui::detail::isLiveHandle(handle)) return nullptr;
    CWnd* owner = reinterpret_cast<::ui::detail::WindowData*>(handle)->self;
    return widgetOf(*owner) == &widget ? owner : nullptr;
  };
  widget.Bind(wxEVT_SET_FOCUS, [this, current](wxFocusEvent& e) {
    e.Skip();
    CWnd* w = current();
    if (syncing_ == 0 && w != nullptr && dataOf(*w).kind != ControlKind::Dialog && CWnd::GetFocus() != w)
      act([w] { w->SetFocus(); });
  });
  switch (kind) {
    case ControlKind::Dialog:
      widget.Bind(wxEVT_CHAR_HOOK, [this, current](wxKeyEvent& e) {
        if (e.GetKeyCode() == WXK_F3 && mainFrame() != nullptr) {
          mainFrame()->toggleSnap();
          return;
        }
        const FrameworkKey key = frameworkKey(e);
        CWnd* w = current();
        if (w == nullptr || (key.code != VK_ESCAPE && key.code != VK_RETURN)) {
          e.Skip();
          return;
        }
        // Return and Escape go through the focused control first (an in-place editor takes them).
        CWnd* focus = CWnd::GetFocus();
        CWnd* target = focus != nullptr && ::ui::detail::topLevelOf(*focus) == w ? focus : w;
        act([&] { host::ui::pressKey(*target, key.code, key.modifiers, key.ch); });
      });
      widget.Bind(wxEVT_CLOSE_WINDOW, [this, current](wxCloseEvent& e) {
        e.Veto();
        if (CWnd* w = current()) act([w] { w->OnCommand(IDCANCEL, BN_CLICKED); });
      });
      break;
    case ControlKind::Static:
      if ((dataOf(window).style & SS_NOTIFY) != 0) {
        // A link: blue and underlined, with the hand cursor; a click opens it through the module.
        widget.SetForegroundColour(wxColour(0, 102, 204));
        wxFont font = widget.GetFont();
        font.SetUnderlined(true);
        widget.SetFont(font);
        widget.SetCursor(wxCursor(wxCURSOR_HAND));
        widget.Bind(wxEVT_LEFT_UP, [this, current](wxMouseEvent&) {
          if (CWnd* w = current()) act([w] { host::ui::clickButton(*w); });
        });
      }
      break;
    case ControlKind::Button:
      widget.Bind(wxEVT_BUTTON, [this, current](wxCommandEvent&) {
        if (CWnd* w = current()) act([w] { host::ui::clickButton(*w); });
      });
      break;
    case ControlKind::CheckBox:
      widget.Bind(wxEVT_CHECKBOX, [this, current, &widget](wxCommandEvent&) {
        CWnd* w = current();
        if (w == nullptr) return;
        act([w] { host::ui::clickButton(*w); });
        // The framework decides the state (a manual check box does not change by itself).
        if (current() == w) sync(*w, widget);
      });
      break;
    case ControlKind::Edit:
      widget.Bind(wxEVT_TEXT, [this, current, &widget](wxCommandEvent&) {
        CWnd* w = current();
        if (w == nullptr || syncing_ > 0) return;
        const std::wstring text = static_cast<wxTextCtrl&>(widget).GetValue().ToStdWstring();
        if (text != dataOf(*w).text) act([w, text] { host::ui::typeText(*w, text); });
      });
      widget.Bind(wxEVT_KEY_DOWN, [this, current](wxKeyEvent& e) {
        const FrameworkKey key = frameworkKey(e);
        e.Skip();
        // Keys that edit the text are the widget's; keys a control may react to are the framework's too.
        CWnd* w = current();
        if (w != nullptr && key.code != 0 && key.ch == 0 && key.code != VK_TAB && key.code != VK_RETURN &&
            key.code != VK_ESCAPE && key.code != VK_BACK && key.code != VK_DELETE && key.code != VK_LEFT &&
            key.code != VK_RIGHT && key.code != VK_HOME && key.code != VK_END)
          act([w, key] { w->OnKeyDown(key.code, key.modifiers); });
      });
      break;
    case ControlKind::UpDown:
      widget.Bind(wxEVT_SPIN_UP, [this, current](wxSpinEvent& e) {
        e.Veto();
        if (CWnd* w = current()) act([w] { host::ui::pressUpDown(*w, true); });
      });
      widget.Bind(wxEVT_SPIN_DOWN, [this, current](wxSpinEvent& e) {
        e.Veto();
        if (CWnd* w = current()) act([w] { host::ui::pressUpDown(*w, false); });
      });
      break;
    case ControlKind::ComboBox:
      widget.Bind(wxEVT_CHOICE, [this, current](wxCommandEvent& e) {
        const int index = e.GetSelection();
        if (CWnd* w = current()) act([w, index] { host::ui::chooseEntry(*w, index); });
      });
      break;
    case ControlKind::ListView: {
      auto& list = static_cast<wxListCtrl&>(widget);
      auto selection = [this, current, &list](wxListEvent&) {
        CWnd* w = current();
        if (w == nullptr || syncing_ > 0) return;
        std::vector<int> rows;
        for (long row = list.GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); row != -1;
             row = list.GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED))
          rows.push_back(static_cast<int>(row));
        // The focused row comes last: the framework gives it the focus.
        const long focused = list.GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED);
        const auto at = std::find(rows.begin(), rows.end(), static_cast<int>(focused));
        if (at != rows.end()) std::rotate(at, at + 1, rows.end());
        act([w, rows] { host::ui::selectRows(*w, rows); });
      };
      list.Bind(wxEVT_LIST_ITEM_SELECTED, selection);
      list.Bind(wxEVT_LIST_ITEM_DESELECTED, selection);
      list.Bind(wxEVT_LIST_COL_CLICK, [this, current](wxListEvent& e) {
        const int column = e.GetColumn();
        CWnd* w = current();
        if (w != nullptr && column >= 0) act([w, column] { host::ui::clickHeader(*w, column); });
      });
      // A column the user made wider or narrower: the list's cells (the decimals of a coordinate) follow it.
      list.Bind(wxEVT_LIST_COL_END_DRAG, [this, current, &list](wxListEvent& e) {
        e.Skip();
        const int column = e.GetColumn();
        wxWeakRef<wxWindow> alive(&list);
        wxTheApp->CallAfter([this, current, alive, column] {
          CWnd* w = alive ? current() : nullptr;
          if (w == nullptr || column < 0) return;
          const int width = std::max(0, static_cast<wxListCtrl*>(alive.get())->GetColumnWidth(column) - kListTextMargins);
          act([w, column, width] { host::ui::resizeColumn(*w, column, width); });
        });
      });
      list.Bind(wxEVT_KEY_DOWN, [this, current](wxKeyEvent& e) {
        const FrameworkKey key = frameworkKey(e);
        // Moving through the rows is the widget's; every other key is the list's (Delete, F2, letters).
        CWnd* w = current();
        if (w == nullptr || key.code == 0 || key.code == VK_UP || key.code == VK_DOWN || key.code == VK_PRIOR ||
            key.code == VK_NEXT || key.code == VK_HOME || key.code == VK_END || key.code == VK_TAB) {
          e.Skip();
          return;
        }
        act([w, key] { host::ui::pressKey(*w, key.code, key.modifiers, key.ch); });
      });
      list.Bind(wxEVT_CONTEXT_MENU, [this, current, &list](wxContextMenuEvent& e) {
        CWnd* w = current();
        if (w == nullptr) return;
        wxPoint at = e.GetPosition() == wxDefaultPosition ? wxPoint(4, 4) : list.ScreenToClient(e.GetPosition());
        int flags = 0;
        long column = -1;
        const long row = list.HitTest(at, flags, &column);
        const int r = row == wxNOT_FOUND ? -1 : static_cast<int>(row);
        const int c = column < 0 ? 0 : static_cast<int>(column);
        act([w, r, c] { host::ui::rightClickCell(*w, r, c); });
      });
      break;
    }
    default: break;
  }
}

}  // namespace host::gui
