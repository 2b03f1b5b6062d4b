// The column header of a report list. Besides the column texts it keeps the sort mark of one column
// (0 none, 1 ascending, 2 descending), which it shows as an arrow.
#pragma once

#include <string>

#include "sdk/ui/CWnd.h"

class CHeaderCtrl : public CWnd {
 public:
  int GetItemCount() const;
  std::wstring GetItemText(int column) const;
  void SetItemText(int column, const std::wstring& text);
  // Sets the mark of `column` and clears that of every other column.
  void SetSortMark(int column, int mark);
  int GetSortMark(int column) const;
};
