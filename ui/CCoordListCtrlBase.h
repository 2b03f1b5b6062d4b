// A table of the points of a point list. The owning dialog chooses the columns from a fixed set of point
// fields (and a length unit per column); the table follows the list it observes, so every point added,
// changed or removed shows at once, in list order. Sorting, the context menu, export and printing come from
// CListCtrlEx.
#pragma once

#include <vector>

#include "points/KoNotifier.h"
#include "points/KoPointList.h"
#include "points/eKoPointRWMask.h"
#include "ui/CListCtrlEx.h"

// Decides which points a table shows.
class KoPointFilter {
 public:
  virtual ~KoPointFilter() = default;
  virtual bool Test(const KoPoint& point) const = 0;
};

class CCoordListCtrlBase : public CListCtrlEx, public KoObserver {
 public:
  CCoordListCtrlBase() = default;
  ~CCoordListCtrlBase() override;

  // Observes `list` (not owned; null detaches) and shows its points.
  void SetPointList(KoPointList* list);
  KoPointList* PointList() const { return m_points; }
  // Only points the filter accepts become rows (not owned; null shows every point).
  void SetFilter(const KoPointFilter* filter);
  // The columns: their field keys in display order and a length unit for each (0 none, 1 mm, 2 cm, 3 m,
  // 4 µm, 5 ft, 6 in). Set before the columns are inserted.
  void SetColumnKeys(std::vector<eKoPointRWMask> keys, std::vector<int> units = {});
  eKoPointRWMask ColumnKey(int column) const;
  int ColumnUnit(int column) const;
  // Pixels per character when a column width is turned into decimals; 0 means 6.
  int AverageCharWidth() const { return m_charWidth; }
  void SetAverageCharWidth(int pixels) { m_charWidth = pixels; }
  // Decimals of a length in `column` at its current width.
  int Decimals(int column) const;

  void* GetFirstItem() override;
  void* GetNextItem(void* previous) override;
  bool GetColumnHeader(std::wstring& text, int& alignment, int& width, int column) override;
  bool GetCellText(wchar_t* buffer, int length, void* data, int row, int column) override;
  bool GetCheckState(int row, int column, int reserved) override;
  bool DeleteDataItem(int row) override;
  bool IsColumnSortable(int column) override;
  int CompareItems(int column, void* a, void* b) override;

  // The list announced a change: rows follow it.
  void Update(const KoEvent& event) override;

 private:
  bool Shows(const KoPoint* point) const;

  KoPointList* m_points = nullptr;
  const KoPointFilter* m_filter = nullptr;
  std::vector<eKoPointRWMask> m_keys;
  std::vector<int> m_units;
  int m_charWidth = 0;
  // An element the list is removing right now: still linked, no longer shown.
  const KoBaseListnode* m_leaving = nullptr;
};
