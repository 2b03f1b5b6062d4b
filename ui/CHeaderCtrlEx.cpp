#include "ui/CHeaderCtrlEx.h"

void CHeaderCtrlEx::SetSortImage(int column, int mark) {
  if (mark == kNoMark) {
    if (column == m_sortColumn) {
      m_sortColumn = -1;
      m_sortMark = kNoMark;
    }
  } else {
    m_sortColumn = column;
    m_sortMark = mark;
  }
  SetSortMark(column, mark);
}

std::wstring CHeaderCtrlEx::GetDisplayText(int column) const {
  std::wstring text = GetItemText(column);
  if (column == m_sortColumn && m_sortMark == kAscending) text += L" \u25B2";
  if (column == m_sortColumn && m_sortMark == kDescending) text += L" \u25BC";
  return text;
}
