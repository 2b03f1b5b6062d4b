// Drop-down list (the in-place chooser over a list cell, or a choice in a dialog). Choosing an entry reports
// CBN_SELCHANGE to the owner; choosing by program (SetCurSel) reports nothing, as in the classic control. The
// window text is the chosen entry's text.
#pragma once

#include <string>

#include "sdk/ui/CWnd.h"

inline constexpr unsigned CBS_DROPDOWNLIST = 0x3;
inline constexpr int CBN_SELCHANGE = 1;
inline constexpr int CB_ERR = -1;

class CComboBox : public CWnd {
 public:
  // For choosers created on the fly; `rect` in pixels.
  bool Create(unsigned style, const CRect& rect, CWnd* parent, int id);
  int AddString(const std::wstring& text);
  int InsertString(int index, const std::wstring& text);
  int DeleteString(int index);
  void ResetContent();
  int GetCount() const;
  // CB_ERR when nothing is chosen.
  int GetCurSel() const;
  // -1 clears the choice; CB_ERR for an index out of range.
  int SetCurSel(int index);
  void GetLBText(int index, std::wstring& text) const;
  // The first entry after `start` (-1: from the top) equal to `text`, ignoring case; CB_ERR when none.
  int FindStringExact(int start, const std::wstring& text) const;
};
