#include "host/gui/WxBackend.h"

#include "host/gui/MainFrame.h"
#include "host/gui/WidgetKeys.h"
#include "host/headless/ScriptRunner.h"
#include "host/headless/UiHeadless.h"
#include "host/ui/CellFit.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CListCtrl.h"

#include <wx/app.h>
#include <wx/aui/auibar.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/filedlg.h>
#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/spinbutt.h>
#include <wx/statbox.h>
#include <wx/statline.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include "host/gui/EventLoop.h"

using ui::ControlKind;
using ::ui::detail::dataOf;

namespace host::gui {
namespace {

bool scripted() { return host::headless::ScriptRunner::active() != nullptr; }

bool alive(const CWnd* window) { return ::ui::detail::isAlive(window) && window->GetSafeHwnd() != nullptr; }

// The report list: rows are asked from the framework list when they are drawn, as the list is virtual. The
// list is found through its window handle, as a module class may have taken it over after the widget was made.
class ReportList : public wxListCtrl {
 public:
  ReportList(wxWindow* parent, const CWnd& list, const wxPoint& at, const wxSize& size)
      : wxListCtrl(parent, wxID_ANY, at, size, wxLC_REPORT | wxLC_VIRTUAL), handle_(list.GetSafeHwnd()) {}

 private:
  wxString OnGetItemText(long row, long column) const override {
    if (!::ui::detail::isLiveHandle(handle_)) return {};
    auto* list = dynamic_cast<CListCtrl*>(reinterpret_cast<::ui::detail::WindowData*>(handle_)->self);
    if (list == nullptr || row >= list->GetItemCount() || column >= list->GetColumnCount()) return {};
    const std::wstring text = list->GetCellDisplayText(static_cast<int>(row), static_cast<int>(column));
    // A coordinate shows whole, with the decimals its column has room for.
    return host::ui::fitDecimals(text, GetColumnWidth(column) - kListTextMargins,
                                 [this](const std::wstring& t) { return GetTextExtent(t).x; });
  }
  HWND handle_;
};

// Dialog templates give an edit 12 to 14 dialog units, less than the toolkit's single-line entry needs to show
// its text at all; the multi-line text widget without wrapping and scroll bars draws a line in that height. Return
// and Escape never reach it: the dialog takes them first.
constexpr long kOneLineEdit = wxTE_MULTILINE | wxTE_NO_VSCROLL | wxTE_DONTWRAP | wxBORDER_SIMPLE;

wxRect pixelsOf(const CWnd& window) {
  const CRect& r = dataOf(window).rect;
  return wxRect(r.left, r.top, std::max(1, r.Width()), std::max(1, r.Height()));
}

}  // namespace

WxBackend& WxBackend::instance() {
  static WxBackend* backend = new WxBackend;  // lives as long as the toolkit
  return *backend;
}

wxWindow* WxBackend::widgetOf(const CWnd& window) const {
  const auto it = widgets_.find(window.GetSafeHwnd());
  return it == widgets_.end() ? nullptr : it->second;
}

std::string WxBackend::takeFailure() {
  std::string f = std::move(failure_);
  failure_.clear();
  return f;
}

void WxBackend::act(const std::function<void()>& action) {
  if (syncing_ > 0) return;
  try {
    action();
  } catch (const std::exception& e) {
    // A person hears the bell; a script run stops at the line that did it.
    if (scripted() && failure_.empty()) failure_ = e.what();
    if (!scripted()) wxBell();
  }
  // The framework may have moved the focus (an in-place editor opened); the widgets follow.
  CWnd* focus = CWnd::GetFocus();
  if (wxWindow* widget = focus != nullptr ? widgetOf(*focus) : nullptr) {
    if (wxWindow::FindFocus() != widget) {
      ++syncing_;
      widget->SetFocus();
      --syncing_;
    }
  }
}

// Message boxes, file dialogs and menus: the person answers in the toolkit's own dialog, and the answer is
// handed to the headless backend, which writes it to the transcript as a script's answer would be.
int WxBackend::messageBox(const std::wstring& text, const std::wstring& caption, unsigned type) {
  auto& headless = host::headless::HeadlessUi::instance();
  if (scripted()) return headless.messageBox(text, caption, type);
  long style = wxCENTRE;
  switch (type & 0xF) {
    case MB_OKCANCEL: style |= wxOK | wxCANCEL; break;
    case MB_YESNOCANCEL: style |= wxYES_NO | wxCANCEL; break;
    case MB_YESNO: style |= wxYES_NO; break;
    case MB_RETRYCANCEL: style |= wxOK | wxCANCEL; break;
    default: style |= wxOK;
  }
  switch (type & 0xF0) {
    case MB_ICONERROR: style |= wxICON_ERROR; break;
    case MB_ICONQUESTION: style |= wxICON_QUESTION; break;
    case MB_ICONWARNING: style |= wxICON_WARNING; break;
    case MB_ICONINFORMATION: style |= wxICON_INFORMATION; break;
    default: break;
  }
  wxMessageDialog dialog(mainFrame(), text, caption.empty() ? wxString("cadhost") : wxString(caption), style);
  if ((type & 0xF) == MB_RETRYCANCEL) dialog.SetOKCancelLabels("Retry", "Cancel");
  const int answer = dialog.ShowModal();
  int id = IDOK;
  if (answer == wxID_CANCEL) id = IDCANCEL;
  if (answer == wxID_YES) id = IDYES;
  if (answer == wxID_NO) id = IDNO;
  if (answer == wxID_OK && (type & 0xF) == MB_RETRYCANCEL) id = IDRETRY;
  headless.queueMessageAnswer(id);
  return headless.messageBox(text, caption, type);
}

int WxBackend::askYesNoCancel(const std::wstring& text, const std::wstring& caption, const std::wstring& yes,
                              const std::wstring& no, const std::wstring& cancel) {
  auto& headless = host::headless::HeadlessUi::instance();
  constexpr unsigned kType = MB_YESNOCANCEL | MB_ICONQUESTION;
  if (scripted()) return headless.messageBox(text, caption, kType);
  wxMessageDialog dialog(mainFrame(), text, caption, wxYES_NO | wxCANCEL | wxICON_QUESTION | wxCENTRE);
  dialog.SetYesNoCancelLabels(wxString(yes), wxString(no), wxString(cancel));
  const int answer = dialog.ShowModal();
  headless.queueMessageAnswer(answer == wxID_YES ? IDYES : answer == wxID_NO ? IDNO : IDCANCEL);
  return headless.messageBox(text, caption, kType);
}

bool WxBackend::fileDialog(const CFileDialog& dialog, std::wstring& path) {
  auto& headless = host::headless::HeadlessUi::instance();
  if (scripted()) return headless.fileDialog(dialog, path);
  std::wstring filter = dialog.GetFilter();
  while (!filter.empty() && filter.back() == L'|') filter.pop_back();
  long style = dialog.IsOpenDialog() ? wxFD_OPEN | wxFD_FILE_MUST_EXIST : wxFD_SAVE | wxFD_OVERWRITE_PROMPT;
  wxFileDialog chooser(mainFrame(), dialog.IsOpenDialog() ? "Open" : "Save as", {}, dialog.GetPathName(),
                       filter.empty() ? wxString("All files|*") : wxString(filter), style);
  if (chooser.ShowModal() == wxID_OK) {
    std::wstring chosen = chooser.GetPath().ToStdWstring();
    if (!dialog.IsOpenDialog() && !dialog.GetDefaultExt().empty() && chooser.GetFilename().Find('.') == wxNOT_FOUND)
      chosen += L"." + dialog.GetDefaultExt();
    headless.queueFileAnswer(chosen);
  } else {
    headless.queueFileAnswer(std::nullopt);
  }
  return headless.fileDialog(dialog, path);
}

int WxBackend::trackPopupMenu(const std::vector<::ui::MenuItem>& items, CWnd* owner) {
  auto& headless = host::headless::HeadlessUi::instance();
  if (scripted()) return headless.trackPopupMenu(items, owner);
  wxMenu menu;
  std::function<void(wxMenu&, const std::vector<::ui::MenuItem>&)> fill = [&](wxMenu& m, const auto& entries) {
    for (const ::ui::MenuItem& item : entries) {
      if (!item.popup.empty()) {
        auto* sub = new wxMenu;
        fill(*sub, item.popup);
        m.AppendSubMenu(sub, item.text);
      } else if ((item.flags & MF_SEPARATOR) != 0 || (item.id == 0 && item.text.empty())) {
        m.AppendSeparator();
      } else {
        wxMenuItem* entry = m.Append(item.id, item.text);
        entry->Enable((item.flags & (MF_GRAYED | MF_DISABLED)) == 0);
      }
    }
  };
  fill(menu, items);
  wxWindow* at = owner != nullptr && widgetOf(*owner) != nullptr ? widgetOf(*owner) : mainFrame();
  const int chosen = at->GetPopupMenuSelectionFromUser(menu);
  if (chosen == wxID_NONE) return 0;
  headless.chooseMenuEntry(chosen);
  const int id = headless.trackPopupMenu(items, owner);
  headless.menuOutcome();
  return id;
}

::ui::PrintResult WxBackend::printTable(const ::ui::PrintTable& table, std::wstring& error) {
  auto& headless = host::headless::HeadlessUi::instance();
  if (scripted()) return headless.printTable(table, error);
  // The pages are laid out by the host's PDF printer; the person chooses where the PDF goes.
  wxFileDialog chooser(mainFrame(), "Print \"" + wxString(table.title) + "\" to PDF", {}, table.title + L".pdf",
                       "PDF documents (*.pdf)|*.pdf", wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (chooser.ShowModal() == wxID_OK)
    headless.queuePrintAnswer(chooser.GetPath().ToStdWstring());
  else
    headless.queuePrintAnswer(std::nullopt);
  return headless.printTable(table, error);
}

void WxBackend::runModalLoop(CDialog& dialog) {
  wxWindow* widget = widgetOf(dialog);
  auto* shown = dynamic_cast<wxDialog*>(widget);
  // Everything else waits while a modal dialog is open.
  std::optional<wxWindowDisabler> others;
  if (shown != nullptr) {
    others.emplace(shown);
    shown->Show();
    shown->Raise();
  }
  auto running = [&] { return alive(&dialog) && dataOf(dialog).modalRunning; };
  if (scripted() && scriptStep) {
    while (running() && scriptStep()) {
    }
    // The script is over: cancelled as by Escape, and closed anyway if it refuses, as nobody is left to close it.
    if (running()) dialog.OnCommand(IDCANCEL, BN_CLICKED);
    if (running()) dialog.EndDialog(IDCANCEL);
    return;
  }
  runEventsUntil([&] { return !running() || mainFrame()->closing(); });
  if (running()) dialog.OnCommand(IDCANCEL, BN_CLICKED);
}

void WxBackend::beep(unsigned frequencyHz, unsigned durationMs) {
  wxBell();
  host::headless::HeadlessUi::instance().beep(frequencyHz, durationMs);
}

void WxBackend::messageBeep(unsigned type) {
  wxBell();
  host::headless::HeadlessUi::instance().messageBeep(type);
}

void WxBackend::setWaitCursor(bool shown) {
  host::headless::HeadlessUi::instance().setWaitCursor(shown);
  if (shown == busy_) return;
  busy_ = shown;
  if (shown)
    wxBeginBusyCursor();
  else
    wxEndBusyCursor();
}

int WxBackend::textWidth(const CWnd* window, const std::wstring& text) {
  // In the font of the widget that shows the window, or of the nearest window around it that has one.
  wxWindow* widget = nullptr;
  for (const CWnd* w = window; w != nullptr && widget == nullptr && alive(w); w = dataOf(*w).parent)
    widget = widgetOf(*w);
  if (widget == nullptr) widget = mainFrame();
  return widget->GetTextExtent(text).x;
}

CSize WxBackend::dialogBaseUnits(const CWnd*) {
  // The average character of the dialog font, measured over the alphabet as the classic dialog units are.
  const wxSize extent = mainFrame()->GetTextExtent("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  return CSize((extent.x / 26 + 1) / 2, extent.y);
}

bool WxBackend::clientSize(const CWnd& window, CSize& size) {
  if (dataOf(window).kind != ControlKind::ListView) return false;
  auto* list = dynamic_cast<wxListCtrl*>(widgetOf(window));
  const auto* framework = dynamic_cast<const CListCtrl*>(&window);
  if (list == nullptr || framework == nullptr) return false;
  // The rows' width inside the border and beside a vertical scroll bar, less the text margins the widget's
  // columns have beyond the framework's: columns fitted to it fill the list without a horizontal scroll bar.
  const wxSize client = list->GetClientSize();
  size = CSize(std::max(0, client.x - framework->GetColumnCount() * kListTextMargins), client.y);
  return true;
}

void WxBackend::windowCreated(CWnd& window) {
  const auto& d = dataOf(window);
  wxWindow* widget = nullptr;
  if (d.kind == ControlKind::Frame) {
    widgets_[window.GetSafeHwnd()] = mainFrame();
    return;
  }
  if (d.kind == ControlKind::Header) return;  // part of its list's widget
  if (d.kind == ControlKind::ToolBar) {
    widgets_[window.GetSafeHwnd()] = mainFrame()->showToolbar(window.GetSafeHwnd(), d.toolbar, d.text, d.visible);
    return;
  }
  if (d.kind == ControlKind::Dialog) {
    auto* dialog = new wxDialog(mainFrame(), wxID_ANY, d.text, wxDefaultPosition, wxDefaultSize,
                                wxDEFAULT_DIALOG_STYLE);
    dialog->SetClientSize(pixelsOf(window).GetSize());
    dialog->CentreOnParent();
    widget = dialog;
    widgets_[window.GetSafeHwnd()] = widget;
    bindEvents(window, *widget);
    // A modeless dialog shows once its controls are made and it was set up (the modal loop shows its own).
    wxWeakRef<wxWindow> ref(widget);
    const HWND handle = window.GetSafeHwnd();
    wxTheApp->CallAfter([this, ref, handle] {

      if (!ref || !::ui::detail::isLiveHandle(handle)) return;
      CWnd* owner = reinterpret_cast<::ui::detail::WindowData*>(handle)->self;
      if (widgetOf(*owner) == ref.get() && owner->IsWindowVisible()) ref->Show();
    });
    return;
  }
  wxWindow* parent = d.parent != nullptr ? widgetOf(*d.parent) : nullptr;
  if (parent == nullptr) return;
  const wxRect r = pixelsOf(window);
  switch (d.kind) {
    case ControlKind::Static:
      if ((d.style & 0x1F) == SS_ETCHEDHORZ)
        widget = new wxStaticLine(parent, wxID_ANY, r.GetPosition(), r.GetSize());
      else
        widget = new wxStaticText(parent, wxID_ANY, d.text, r.GetPosition(), r.GetSize(), wxST_NO_AUTORESIZE);
      break;
    case ControlKind::GroupBox: widget = new wxStaticBox(parent, wxID_ANY, d.text, r.GetPosition(), r.GetSize()); break;
    case ControlKind::Edit:
      widget = new wxTextCtrl(parent, wxID_ANY, d.text, r.GetPosition(), r.GetSize(),
                              ((d.style & ES_READONLY) != 0 ? wxTE_READONLY : 0) | kOneLineEdit);
      break;
    case ControlKind::Button: {
      auto* button = new wxButton(parent, wxID_ANY, d.text, r.GetPosition(), r.GetSize());
      if ((d.style & 0xF) == BS_DEFPUSHBUTTON) button->SetDefault();
      widget = button;
      break;
    }
    case ControlKind::CheckBox: widget = new wxCheckBox(parent, wxID_ANY, d.text, r.GetPosition(), r.GetSize()); break;
    case ControlKind::UpDown:
      widget = new wxSpinButton(parent, wxID_ANY, r.GetPosition(), r.GetSize(), wxSP_VERTICAL | wxSP_WRAP);
      break;
    case ControlKind::ListView:
      widget = new ReportList(parent, window, r.GetPosition(), r.GetSize());
      break;
    case ControlKind::ComboBox: widget = new wxChoice(parent, wxID_ANY, r.GetPosition(), r.GetSize()); break;
    default: break;
  }
  if (widget == nullptr) return;
  widgets_[window.GetSafeHwnd()] = widget;
  bindEvents(window, *widget);
  sync(window, *widget);
}

void WxBackend::windowDestroyed(CWnd& window) {
  const auto it = widgets_.find(window.GetSafeHwnd());
  if (it == widgets_.end()) return;
  wxWindow* widget = it->second;
  widgets_.erase(it);
  if (widget == nullptr || widget == mainFrame()) return;
  if (dataOf(window).kind == ControlKind::ToolBar) {
    mainFrame()->removeToolbar(window.GetSafeHwnd());
    return;
  }
  // The widget may be inside its own event handler (a button that closes its dialog): it goes later.
  widget->Hide();
  wxWeakRef<wxWindow> ref(widget);
  wxTheApp->CallAfter([ref] {
    if (ref) ref->Destroy();
  });
}

void WxBackend::windowChanged(CWnd& window) {
  const auto& d = dataOf(window);
  if (d.kind == ControlKind::Header) {
    // Columns and sort marks live on the header; the list widget shows them.
    if (d.parent != nullptr)
      if (wxWindow* list = widgetOf(*d.parent)) sync(*d.parent, *list);
    return;
  }
  if (d.kind == ControlKind::ToolBar) {
    widgets_[window.GetSafeHwnd()] = mainFrame()->showToolbar(window.GetSafeHwnd(), d.toolbar, d.text, d.visible);
    return;
  }
  if (wxWindow* widget = widgetOf(window)) sync(window, *widget);
}

}  // namespace host::gui
