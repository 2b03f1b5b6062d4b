// The header of an extended list. It shows the sort direction of one column as an arrow beside its text and
// remembers which column is sorted which way, so that the next click on that header can turn the direction.
#pragma once

#include <string>

#include "sdk/ui/CHeaderCtrl.h"

class CHeaderCtrlEx : public CHeaderCtrl {
 public:
  enum : int { kNoMark = 0, kAscending = 1, kDescending = 2 };

  // Remembers `column` with `mark` and shows it; a mark of 0 clears the arrow of that column.
  void SetSortImage(int column, int mark);
  int SortColumn() const { return m_sortColumn; }
  int SortMark() const { return m_sortMark; }

  // What the header shows for a column: its text, and the arrow when it is the sorted one.
  std::wstring GetDisplayText(int column) const;

 private:
  int m_sortColumn = -1;
  int m_sortMark = kNoMark;
};
