#include "ui/CCoordListCtrl.h"

#include "support/KoConvert.h"

void CCoordListCtrl::Setup(KoPointList* list, std::vector<eKoPointRWMask> keys, std::vector<int> units) {
  SetColumnKeys(std::move(keys), std::move(units));
  // The decimals of a column follow its width in characters of the list's font: digits are what it shows.
  SetAverageCharWidth(GetStringWidth(L"0123456789") / 10);
  while (GetColumnCount() > 0) DeleteColumn(0);
  InsertColumnsFromHeaders();
  SetPointList(list);
}

int CCoordListCtrl::GetCellEditKind(int row, int column) {
  return row >= 0 && row < RowCount() && ColumnKey(column) == eKoRWName ? kEditText : kEditNone;
}

bool CCoordListCtrl::SetCellText(int row, int column, const std::wstring& text) {
  auto* point = static_cast<KoPoint*>(RowData(row));
  if (point == nullptr || ColumnKey(column) != eKoRWName || PointList() == nullptr) return false;
  point->name = UniToAnsi(text).c_str();
  PointList()->NotifyChanged();
  return true;
}
