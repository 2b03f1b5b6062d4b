// The coordinate table of a dialog: CCoordListCtrlBase with its set-up in one call, and the point name
// editable in place (F2 or a double click on the name; Return keeps the new name, Escape the old one).
#pragma once

#include <vector>

#include "ui/CCoordListCtrlBase.h"

class CCoordListCtrl : public CCoordListCtrlBase {
 public:
  // Takes the columns, measures the list's font, inserts the columns and shows the points of `list`.
  void Setup(KoPointList* list, std::vector<eKoPointRWMask> keys, std::vector<int> units = {});

  int GetCellEditKind(int row, int column) override;
  bool SetCellText(int row, int column, const std::wstring& text) override;
};
