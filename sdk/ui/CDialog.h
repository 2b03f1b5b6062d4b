// Dialogs made from templates. Modeless: Create() builds the window and returns; DestroyWindow() ends it, and a
// dialog allocated with new deletes itself in PostNcDestroy(). Modal: DoModal() builds the window, runs until
// EndDialog() and returns its result. OnInitDialog() runs after every control of the template exists, so it may
// subclass controls and fill them.
#pragma once

#include <string>

#include "sdk/ui/CWnd.h"

class CDataExchange;

class CDialog : public CWnd {
 public:
  explicit CDialog(int templateId = 0, CWnd* parent = nullptr);
  ~CDialog() override;

  bool Create(int templateId, CWnd* parent = nullptr);
  // IDOK, IDCANCEL or what EndDialog() was given; -1 when the template is missing.
  virtual int DoModal();
  // Modal: ends the loop with `result`. Modeless: only hides the window, as the classic framework does.
  void EndDialog(int result);
  // Moves values between member variables and controls through DoDataExchange(); false if a value is refused.
  bool UpdateData(bool saveAndValidate = true);

  int GetTemplateId() const;
  bool IsModal() const;
  int GetDefID() const;
  void SetDefID(int id);
  void NextDlgCtrl();
  void PrevDlgCtrl();
  void GotoDlgCtrl(CWnd* control);

  // Handlers. OnInitDialog: UpdateData(false), true. OnOK: UpdateData(true), then EndDialog(IDOK).
  // OnCancel: EndDialog(IDCANCEL).
  virtual bool OnInitDialog();
  virtual void OnOK();
  virtual void OnCancel();
  virtual void DoDataExchange(CDataExchange* dx);
  // Routes IDOK and IDCANCEL clicks to OnOK and OnCancel.
  bool OnCommand(int id, int code) override;

 private:
  int templateId_;
  CWnd* parentAtConstruction_;
};

class CDataExchange {
 public:
  CDataExchange(CDialog* dialog, bool saveAndValidate) : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}
  CDialog* m_pDlgWnd;
  bool m_bSaveAndValidate;
  bool m_failed = false;
};

// Attaches `control` to template control `id` the first time it runs (see CWnd::SubclassDlgItem).
void DDX_Control(CDataExchange* dx, int id, CWnd& control);
void DDX_Text(CDataExchange* dx, int id, std::wstring& value);
void DDX_Check(CDataExchange* dx, int id, int& value);
