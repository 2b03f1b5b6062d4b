// The modeless dialog of ViraCoordDef: up to three picked drawing points, the coordinates the surveyor types
// for them, a preview of the transformation they give, and OK to apply it to the whole drawing.
#pragma once

#include "points/KoPoint.h"
#include "sdk/AcGeMatrix3d.h"
#include "sdk/ui/CDialog.h"
#include "ui/CKoCoordEdit.h"

class CDlgMoveDrawing : public CDialog {
 public:
  static constexpr int kPairs = 3;

  // The one open dialog, made (modeless, owned by the host's main window) when there is none yet; null
  // when the dialog cannot be made.
  static CDlgMoveDrawing* GetOrCreate();
  // The open dialog or null.
  static CDlgMoveDrawing* Instance() { return s_instance; }

  // Fills the next pair round robin: pair 1, 2, 3, then pair 1 again.
  void AddDrawingPoint(const KoPoint& point);
  // Ends the dialog without applying anything.
  void Close();

  // Reads the fields, solves, and shows the result (preview text, OK button, matrix).
  void ComputeTransformation();
  // What OK (confirm set) and Abbrechen (confirm cleared) do: with confirm, the current fields are solved
  // again and the drawing is transformed unless the result is the identity. Ends the running point prompt
  // and destroys the dialog, which deletes itself: nothing may touch it afterwards.
  void Apply(bool confirm);

  const AcGeMatrix3d& Matrix() const { return m_matrix; }
  int NextPairIndex() const { return m_pairIndex; }

 protected:
  bool OnInitDialog() override;
  void OnOK() override;
  void OnCancel() override;
  void DoDataExchange(CDataExchange* dx) override;
  bool OnCommand(int id, int code) override;
  void PostNcDestroy() override;

 private:
  CDlgMoveDrawing();

  CKoCoordEdit m_actual[kPairs];
  CKoCoordEdit m_target[kPairs];
  int m_pairIndex = 0;
  AcGeMatrix3d m_matrix;
  bool m_confirm = false;
  // Edits report EN_CHANGE while the template builds them; nothing is solved before initialisation ends.
  bool m_initialised = false;

  static CDlgMoveDrawing* s_instance;
};
