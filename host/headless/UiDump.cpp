#include "host/headless/UiDump.h"

#include "host/headless/UiHeadless.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CComboBox.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/CSpinButtonCtrl.h"

namespace host::headless {
namespace {

std::string quoted(const std::wstring& text) { return "\"" + escapeForTranscript(text) + "\""; }

void dumpList(CListCtrl& list, const std::string& indent, std::string& out) {
  std::string line = indent + "header";
  CHeaderCtrl* header = list.GetHeaderCtrl();
  const int columns = list.GetColumnCount();
  for (int c = 0; c < columns; ++c) line += " " + quoted(header->GetItemText(c));
  for (int c = 0; c < columns; ++c) {
    const int mark = header->GetSortMark(c);
    if (mark != 0) line += " sorted " + std::to_string(c) + (mark == 1 ? " ascending" : " descending");
  }
  out += line + "\n";
  const int rows = list.GetItemCount();
  for (int r = 0; r < rows; ++r) {
    line = indent + "row " + std::to_string(r);
    for (int c = 0; c < columns; ++c) line += " " + quoted(list.GetCellDisplayText(r, c));
    if (list.GetItemState(r, LVIS_SELECTED) != 0) line += " selected";
    out += line + "\n";
  }
}

void dumpControl(CWnd& control, const std::string& indent, std::string& out) {
  const std::string kind = host::ui::kindWord(control);
  if (kind == "header") return;  // shown with its list
  std::string line = indent + std::to_string(control.GetDlgCtrlID()) + " " + kind + " " +
                     quoted(control.GetWindowText());
  if (auto* spin = dynamic_cast<CSpinButtonCtrl*>(&control); spin != nullptr && kind == "updown")
    line += " position " + std::to_string(spin->GetPos());
  if (auto* box = dynamic_cast<CButton*>(&control); box != nullptr && kind == "checkbox" && box->GetCheck() != 0)
    line += " checked";
  if (auto* edit = dynamic_cast<CEdit*>(&control); edit != nullptr && kind == "edit" && edit->IsReadOnly())
    line += " readonly";
  if (!control.IsWindowEnabled()) line += " disabled";
  if (!control.IsWindowVisible()) line += " hidden";
  out += line + "\n";
  if (auto* list = dynamic_cast<CListCtrl*>(&control); list != nullptr && kind == "list")
    dumpList(*list, indent + "  ", out);
  if (auto* combo = dynamic_cast<CComboBox*>(&control); combo != nullptr && kind == "combo") {
    line = indent + "  entries";
    for (int i = 0; i < combo->GetCount(); ++i) {
      std::wstring text;
      combo->GetLBText(i, text);
      line += " " + quoted(text);
    }
    out += line + "\n";
  }
  std::vector<CWnd*> children;
  for (const auto& slot : ::ui::detail::dataOf(control).children) children.push_back(slot.window);
  for (CWnd* child : children) dumpControl(*child, indent + "  ", out);
}

}  // namespace

std::string dumpDialog(CDialog& dialog) {
  std::string out = "dialog " + std::to_string(::ui::detail::dataOf(dialog).templateId) + " " +
                    quoted(dialog.GetWindowText()) + (dialog.IsWindowVisible() ? "" : " hidden") + "\n";
  std::vector<CWnd*> controls;
  for (const auto& slot : ::ui::detail::dataOf(dialog).children) controls.push_back(slot.window);
  for (CWnd* control : controls) dumpControl(*control, "", out);
  return out;
}

}  // namespace host::headless
