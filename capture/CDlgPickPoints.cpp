#include "capture/CDlgPickPoints.h"

#include <cwctype>

#include "app/ViraResourceIds.h"
#include "app/ViraResourceScope.h"
#include "sdk/AcApDocManager.h"
#include "sdk/AcFrame.h"
#include "sdk/ui/CFileDialog.h"
#include "support/KoConvert.h"

namespace {

constexpr const wchar_t* kSaveFilter = L"Excel (*.csv)|*.csv|Text (*.txt)|*.txt||";

std::wstring lowerCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
  return text;
}

}  // namespace

CDlgPickPoints* CDlgPickPoints::s_instance = nullptr;

CDlgPickPoints::CDlgPickPoints() : CDialog(IDD_PICK_POINTS) {}

CDlgPickPoints* CDlgPickPoints::GetOrCreate() {
  if (s_instance != nullptr) return s_instance;
  ViraResourceScope resources;
  auto* dialog = new CDlgPickPoints;
  s_instance = dialog;
  if (!dialog->Create(IDD_PICK_POINTS, acedGetAcadFrame())) {
    s_instance = nullptr;
    delete dialog;
    return nullptr;
  }
  return s_instance;
}

void CDlgPickPoints::DoDataExchange(CDataExchange* dx) {
  CDialog::DoDataExchange(dx);
  DDX_Control(dx, IDC_POINT_LIST, m_list);
  DDX_Text(dx, IDC_NEXT_NUMBER, m_nextNumber);
}

bool CDlgPickPoints::OnInitDialog() {
  CDialog::OnInitDialog();
  m_list.Setup(&m_points, {eKoRWName, eKoRWX, eKoRWY, eKoRWZ});
  m_renameWatch.AttachTo(&m_points.Notifier());
  return true;
}

void CDlgPickPoints::AddPoint(const KoPoint& point) {
  // The name is the number as the field shows it at the moment of the click, typed changes included.
  UpdateData(true);
  KoPoint named(point);
  named.name = UniToAnsi(m_nextNumber).c_str();
  m_unsaved = true;
  m_points.AppendCopy(named);
  m_nextNumber = AdvanceNumber(m_nextNumber);
  UpdateData(false);
}

bool CDlgPickPoints::Save() {
  CFileDialog chooser(false, L".csv", L"", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, kSaveFilter, this);
  if (chooser.DoModal() != IDOK) return false;
  const std::wstring path = chooser.GetPathName();
  const std::wstring extension = lowerCase(chooser.GetFileExt());
  const bool written = extension != L"csv" && extension == L"txt" ? m_list.WriteSeparatedFile(path, L" ")
                                                                    : m_list.WriteSeparatedFile(path, false, false);
  // A file that could not be written leaves the points unsaved, so that OK still offers to save them.
  if (written) m_unsaved = false;
  return written;
}

bool CDlgPickPoints::OnCommand(int id, int code) {
  if (id == IDC_SAVE_POINTS && code == BN_CLICKED) {
    Save();
    return true;
  }
  return CDialog::OnCommand(id, code);
}

bool CDlgPickPoints::OnNotify(ui::UiNotify& notify) {
  if (notify.idFrom != IDC_NEXT_NUMBER_SPIN || notify.code != UDN_DELTAPOS) return CDialog::OnNotify(notify);
  UpdateData(true);
  // With the control's default range the upper arrow reports a negative delta: it advances the number.
  m_nextNumber = notify.delta >= 0 ? StepBackNumber(m_nextNumber) : AdvanceNumber(m_nextNumber);
  UpdateData(false);
  notify.result = 0;
  return true;
}

void CDlgPickPoints::OnOK() {
  m_confirmed = true;
  CloseDialog();
}

void CDlgPickPoints::OnCancel() {
  m_confirmed = false;
  CloseDialog();
}

void CDlgPickPoints::CloseDialog() {
  // The user may still cancel the file dialog: the capture ends anyway.
  if (m_confirmed && m_unsaved) Save();
  // The point prompt of ViraPtPick runs beside the dialog; its cancel keyword ends it.
  acDocManager->sendStringToExecute(acDocManager->curDocument(), L"cancel\n");
  Close();
}

void CDlgPickPoints::Close() {
  if (GetSafeHwnd() != nullptr) DestroyWindow();
}

void CDlgPickPoints::PostNcDestroy() {
  if (s_instance == this) s_instance = nullptr;
  delete this;
}
