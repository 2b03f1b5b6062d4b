#include "transform/CDlgMoveDrawing.h"

#include "app/CResourceDll.h"
#include "app/ViraResourceIds.h"
#include "points/KoPointList.h"
#include "sdk/AcApDocManager.h"
#include "sdk/AcFrame.h"
#include "sdk/ui/MessageBox.h"
#include "support/KoConvert.h"
#include "transform/DrawingTrafoSolver.h"
#include "transform/DrawingTransform.h"
#include "transform/ViraTrace.h"

#include <exception>

namespace {

constexpr int kActualIds[CDlgMoveDrawing::kPairs] = {IDC_ACTUAL_1, IDC_ACTUAL_2, IDC_ACTUAL_3};
constexpr int kTargetIds[CDlgMoveDrawing::kPairs] = {IDC_TARGET_1, IDC_TARGET_2, IDC_TARGET_3};

bool isTargetField(int id) { return id == IDC_TARGET_1 || id == IDC_TARGET_2 || id == IDC_TARGET_3; }
bool isSwitch(int id) { return (id >= IDC_PAIR_1 && id <= IDC_PAIR_3) || id == IDC_SCALE; }

}  // namespace

CDlgMoveDrawing* CDlgMoveDrawing::s_instance = nullptr;

CDlgMoveDrawing::CDlgMoveDrawing() : CDialog(IDD_MOVE_DRAWING) {}

CDlgMoveDrawing* CDlgMoveDrawing::GetOrCreate() {
  if (s_instance != nullptr) return s_instance;
  CResourceDll resources;
  auto* dialog = new CDlgMoveDrawing;
  s_instance = dialog;
  if (!dialog->Create(IDD_MOVE_DRAWING, acedGetAcadFrame())) {
    s_instance = nullptr;
    delete dialog;
    return nullptr;
  }
  return s_instance;
}

void CDlgMoveDrawing::DoDataExchange(CDataExchange* dx) {
  CDialog::DoDataExchange(dx);
  for (int k = 0; k < kPairs; ++k) {
    DDX_Control(dx, kActualIds[k], m_actual[k]);
    DDX_Control(dx, kTargetIds[k], m_target[k]);
  }
}

bool CDlgMoveDrawing::OnInitDialog() {
  CDialog::OnInitDialog();
  m_initialised = true;
  ComputeTransformation();
  return true;
}

void CDlgMoveDrawing::AddDrawingPoint(const KoPoint& point) {
  const int k = m_pairIndex;
  // An empty or partly typed target takes its missing coordinates from the picked point.
  m_target[k].SetReferencePoint(point);
  m_actual[k].Write(point);
  CheckDlgButton(IDC_PAIR_1 + k, BST_CHECKED);
  m_pairIndex = (k + 1) % kPairs;
  ComputeTransformation();
}

void CDlgMoveDrawing::ComputeTransformation() {
  for (CKoCoordEdit& target : m_target) target.Read();

  KoPointList actual;
  KoPointList target;
  for (int k = 0; k < kPairs; ++k) {
    // Bits 0-1 of the button state: checked (or indeterminate).
    if ((IsDlgButtonChecked(IDC_PAIR_1 + k) & 3) == 0 || !m_actual[k].HoldsValue()) continue;
    actual.AppendCopy(m_actual[k].Point());
    target.AppendCopy(m_target[k].Point());
  }
  const bool scale = (IsDlgButtonChecked(IDC_SCALE) & 3) != 0;

  // The matrix is the identity unless the pairs give a solution.
  const DrawingTrafoSolution solution = SolveDrawingTrafo(actual, target, scale);
  m_matrix = solution.matrix;
  if (!solution.updatesDialog) return;
  SetDlgItemText(IDC_PREVIEW, solution.preview);
  if (CWnd* ok = GetDlgItem(IDOK)) ok->EnableWindow(solution.okEnabled);
}

bool CDlgMoveDrawing::OnCommand(int id, int code) {
  // The preview follows the fields as the surveyor types and ticks.
  if (m_initialised && ((code == EN_CHANGE && isTargetField(id)) || (code == BN_CLICKED && isSwitch(id)))) {
    ComputeTransformation();
    return true;
  }
  return CDialog::OnCommand(id, code);
}

void CDlgMoveDrawing::OnOK() {
  m_confirm = true;
  Apply(m_confirm);
}

void CDlgMoveDrawing::OnCancel() {
  m_confirm = false;
  Apply(m_confirm);
}

void CDlgMoveDrawing::Apply(bool confirm) {
  if (confirm) {
    ViraTrace("Transform");
    ComputeTransformation();
    if (!m_matrix.isEqualTo(AcGeMatrix3d::kIdentity, AcGeContext::gTol)) {
      try {
        CWaitCursor wait;
        ViraTraceMatrix(m_matrix);
        TransformDrawing(m_matrix);
      } catch (const std::exception& failure) {
        AfxMessageBox(KoUtf8ToWide(failure.what()));
      }
    } else {
      ViraTrace("Ident Matrix");
    }
  }
  // The point prompt of ViraCoordDef runs beside the dialog; its cancel keyword ends it.
  acDocManager->sendStringToExecute(acDocManager->curDocument(), L"cancel\n");
  Close();
}

void CDlgMoveDrawing::Close() {
  if (GetSafeHwnd() != nullptr) DestroyWindow();
}

void CDlgMoveDrawing::PostNcDestroy() {
  if (s_instance == this) s_instance = nullptr;
  delete this;
}
