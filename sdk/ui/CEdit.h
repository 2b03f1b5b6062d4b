// Single-line edit. As in the classic edit control, setting the text puts the caret back to the start and
// reports EN_CHANGE to the parent; a field that is refreshed while the user types keeps its caret by reading
// GetSel() before and calling SetSel() after. Typing reports EN_CHANGE too.
#pragma once

#include <string>

#include "sdk/ui/CWnd.h"

class CEdit : public CWnd {
 public:
  // For editors created on the fly (an in-place editor over a list cell); `rect` in pixels.
  bool Create(unsigned style, const CRect& rect, CWnd* parent, int id);
  // Selection as character positions; start == end is the caret.
  void GetSel(int& start, int& end) const;
  // Positions beyond the text are put at its end; -1 as start removes the selection (caret at the end of it).
  void SetSel(int start, int end, bool noScroll = false);
  void ReplaceSel(const std::wstring& text, bool canUndo = false);
  bool SetReadOnly(bool readOnly = true);
  bool IsReadOnly() const;
  void SetLimitText(int maxChars);
  int GetLimitText() const;
};
