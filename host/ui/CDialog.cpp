#include "sdk/ui/CDialog.h"

#include <algorithm>

#include "host/ui/UiBackend.h"
#include "host/ui/UiThread.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"

using ui::detail::dataOf;
using ui::detail::WindowData;

namespace ui::detail {

CWnd* nextTabControl(CWnd& dialog, CWnd* current, bool backwards) {
  std::vector<CWnd*> controls;
  collectDescendants(dialog, controls);
  std::vector<CWnd*> stops;
  for (CWnd* control : controls) {
    const ControlKind kind = dataOf(*control).kind;
    const bool takesFocus = kind == ControlKind::Edit || kind == ControlKind::Button ||
                            kind == ControlKind::CheckBox || kind == ControlKind::ListView ||
                            kind == ControlKind::ComboBox;
    if (takesFocus && control->IsWindowVisible() && control->IsWindowEnabled()) stops.push_back(control);
  }
  if (stops.empty()) return nullptr;
  auto at = std::find(stops.begin(), stops.end(), current);
  if (at == stops.end()) return backwards ? stops.back() : stops.front();
  const auto index = static_cast<std::size_t>(at - stops.begin());
  const std::size_t count = stops.size();
  return stops[backwards ? (index + count - 1) % count : (index + 1) % count];
}

}  // namespace ui::detail

namespace {

bool buildDialog(CDialog& dialog, int templateId, CWnd* owner, bool modal) {
  const ui::DialogTemplate* form = ui::findDialogTemplate(templateId);
  if (form == nullptr || dialog.GetSafeHwnd() != nullptr) return false;
  const CSize base = host::ui::backend().dialogBaseUnits(&dialog);
  const CRect& r = form->rect;
  const CRect pixels(r.left * base.cx / 4, r.top * base.cy / 8, r.right * base.cx / 4, r.bottom * base.cy / 8);
  ui::detail::createWindow(dialog, ui::ControlKind::Dialog, 0, form->title, WS_VISIBLE, pixels, nullptr);
  WindowData& d = dataOf(dialog);
  d.owner = owner;
  d.templateId = templateId;
  d.modal = modal;
  d.modalRunning = modal;
  host::ui::noteDialogOpened(templateId);
  for (const ui::ControlTemplate& control : form->controls) {
    ui::detail::createTemplateControl(dialog, control);
    const bool isDefault = control.kind == ui::ControlKind::Button && (control.style & 0xF) == BS_DEFPUSHBUTTON;
    if (isDefault) d.defaultId = control.id;
  }
  const bool setFocus = dialog.OnInitDialog();
  // OnInitDialog may already have closed (and deleted) a modeless dialog.
  if (setFocus && ui::detail::isAlive(&dialog) && dialog.GetSafeHwnd() != nullptr) {
    if (CWnd* first = ui::detail::nextTabControl(dialog, nullptr, false)) first->SetFocus();
  }
  return true;
}

}  // namespace

CDialog::CDialog(int templateId, CWnd* parent) : templateId_(templateId), parentAtConstruction_(parent) {}

CDialog::~CDialog() = default;

bool CDialog::Create(int templateId, CWnd* parent) {
  bool created = false;
  templateId_ = templateId;
  host::ui::runOnUiThread([&] {
    created = buildDialog(*this, templateId, parent != nullptr ? parent : parentAtConstruction_, false);
  });
  return created;
}

int CDialog::DoModal() {
  int result = -1;
  host::ui::runOnUiThread([&] {
    if (!buildDialog(*this, templateId_, parentAtConstruction_, true)) return;
    // The window goes when the loop ends, also when the loop is left by an error.
    struct CloseOnExit {
      CDialog& dialog;
      ~CloseOnExit() {
        if (dialog.GetSafeHwnd() != nullptr) dialog.DestroyWindow();
      }
    } closer{*this};
    if (dataOf(*this).modalRunning) host::ui::backend().runModalLoop(*this);
    result = dataOf(*this).modalResult;
  });
  return result;
}

void CDialog::EndDialog(int result) {
  WindowData& d = dataOf(*this);
  if (!d.created) return;
  d.modalResult = result;
  if (d.modal) {
    d.modalRunning = false;
  } else {
    ShowWindow(SW_HIDE);
  }
}

bool CDialog::UpdateData(bool saveAndValidate) {
  CDataExchange exchange(this, saveAndValidate);
  DoDataExchange(&exchange);
  return !exchange.m_failed;
}

int CDialog::GetTemplateId() const { return templateId_; }
bool CDialog::IsModal() const { return dataOf(*this).modal; }
int CDialog::GetDefID() const { return dataOf(*this).defaultId; }
void CDialog::SetDefID(int id) { dataOf(*this).defaultId = id; }

void CDialog::NextDlgCtrl() {
  if (CWnd* next = ui::detail::nextTabControl(*this, GetFocus(), false)) next->SetFocus();
}

void CDialog::PrevDlgCtrl() {
  if (CWnd* previous = ui::detail::nextTabControl(*this, GetFocus(), true)) previous->SetFocus();
}

void CDialog::GotoDlgCtrl(CWnd* control) {
  if (control != nullptr) control->SetFocus();
}

bool CDialog::OnInitDialog() {
  UpdateData(false);
  return true;
}

void CDialog::OnOK() {
  if (!UpdateData(true)) return;
  EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

bool CDialog::OnCommand(int id, int code) {
  if (code != BN_CLICKED) return false;
  if (id == IDOK) {
    OnOK();
    return true;
  }
  if (id == IDCANCEL) {
    OnCancel();
    return true;
  }
  return false;
}

void DDX_Control(CDataExchange* dx, int id, CWnd& control) {
  if (control.GetSafeHwnd() == nullptr && !control.SubclassDlgItem(id, dx->m_pDlgWnd)) dx->m_failed = true;
}

void DDX_Text(CDataExchange* dx, int id, std::wstring& value) {
  if (dx->m_bSaveAndValidate) {
    value = dx->m_pDlgWnd->GetDlgItemText(id);
  } else {
    dx->m_pDlgWnd->SetDlgItemText(id, value);
  }
}

void DDX_Check(CDataExchange* dx, int id, int& value) {
  if (dx->m_bSaveAndValidate) {
    value = dx->m_pDlgWnd->IsDlgButtonChecked(id);
  } else {
    dx->m_pDlgWnd->CheckDlgButton(id, value);
  }
}
