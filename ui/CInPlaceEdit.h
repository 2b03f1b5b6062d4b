// A one-line editor placed over a list cell. Return takes the text, Escape drops it, and moving the focus
// elsewhere takes it too, as a surveyor expects when clicking the next cell. The list owns the decision:
// the editor only reports to it, and deletes itself once its window is gone.
#pragma once

#include <string>

#include "sdk/ui/CEdit.h"

class CListCtrlEx;

class CInPlaceEdit : public CEdit {
 public:
  // The id the editor window carries (a list's own commands are small numbers).
  static constexpr int kEditorId = 0x7F01;

  explicit CInPlaceEdit(CListCtrlEx& list) : m_list(list) {}
  // Creates the window over `cell` (pixels in the list), shows `text` all selected and takes the focus.
  bool Open(const CRect& cell, const std::wstring& text);

  void OnKeyDown(unsigned key, unsigned modifiers) override;
  void OnKillFocus(CWnd* next) override;

 protected:
  void PostNcDestroy() override { delete this; }

 private:
  CListCtrlEx& m_list;
};
