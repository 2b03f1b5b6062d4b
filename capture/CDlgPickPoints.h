// The modeless dialog of ViraPtPick: the points captured so far in a coordinate table, the name the next
// point will get, and saving the points as CSV (for a spreadsheet) or blank-separated text (for other survey
// software). It lives while the capture prompt runs; OK saves what is not yet saved and ends the capture.
#pragma once

#include <string>

#include "points/KoPointList.h"
#include "sdk/ui/CDialog.h"
#include "ui/CCoordListCtrl.h"

class CDlgPickPoints : public CDialog {
 public:
  // The one open dialog, made (modeless, owned by the host's main window) when there is none yet; null when
  // it cannot be made.
  static CDlgPickPoints* GetOrCreate();
  // The open dialog or null.
  static CDlgPickPoints* Instance() { return s_instance; }

  // Names a copy of `point` with the next number as the field shows it now, appends it to the list and
  // advances the number.
  void AddPoint(const KoPoint& point);
  // Ends the dialog without saving.
  void Close();
  // Asks for a file and writes the points: .txt blank-separated with a header row, anything else as CSV
  // with the user's list separator and no header. True when a file was written.
  bool Save();

  // The next number split into its prefix (up to the last letter) and its digits, both after trimming blanks.
  static void SplitNumber(const std::wstring& number, std::wstring& prefix, std::wstring& digits);
  // The digits plus one (minus one, never below 0), keeping their width with leading zeros.
  static std::wstring AdvanceNumber(const std::wstring& number);
  static std::wstring StepBackNumber(const std::wstring& number);

  const std::wstring& NextNumber() const { return m_nextNumber; }
  KoPointList& Points() { return m_points; }
  CCoordListCtrl& List() { return m_list; }
  bool HasUnsavedPoints() const { return m_unsaved; }

 protected:
  bool OnInitDialog() override;
  void DoDataExchange(CDataExchange* dx) override;
  void OnOK() override;
  void OnCancel() override;
  bool OnCommand(int id, int code) override;
  bool OnNotify(ui::UiNotify& notify) override;
  void PostNcDestroy() override;

 private:
  CDlgPickPoints();
  // OK, Cancel and Escape: save if confirmed and needed, end the capture prompt, destroy the dialog.
  void CloseDialog();

  // A point renamed in the list makes the saved file stale, as a new point does.
  class RenameWatch : public KoObserver {
   public:
    explicit RenameWatch(CDlgPickPoints& dialog) : m_dialog(dialog) {}
    void Update(const KoEvent& event) override {
      if (event.code == eKoEventChanged) m_dialog.m_unsaved = true;
    }

   private:
    CDlgPickPoints& m_dialog;
  };

  CCoordListCtrl m_list;
  std::wstring m_nextNumber = L"1";
  KoPointList m_points;
  bool m_unsaved = false;
  bool m_confirmed = false;
  RenameWatch m_renameWatch{*this};

  static CDlgPickPoints* s_instance;
};
