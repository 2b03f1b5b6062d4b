#include "sdk/ui/CListCtrl.h"

#include <algorithm>

#include "host/ui/UiBackend.h"
#include "host/ui/WindowData.h"

using ui::detail::dataOf;
using ui::detail::WindowData;

namespace {

bool isVirtual(const CWnd& list) { return (list.GetStyle() & LVS_OWNERDATA) != 0; }

std::vector<ui::detail::Column>& columnsOf(const CListCtrl& list) {
  static std::vector<ui::detail::Column> none;
  CHeaderCtrl* header = list.GetHeaderCtrl();
  if (header == nullptr) {
    none.clear();
    return none;
  }
  return dataOf(*header).columns;
}

bool validColumn(const CListCtrl& list, int column) {
  return column >= 0 && column < static_cast<int>(columnsOf(list).size());
}

}  // namespace

int CHeaderCtrl::GetItemCount() const { return static_cast<int>(dataOf(*this).columns.size()); }

std::wstring CHeaderCtrl::GetItemText(int column) const {
  const auto& columns = dataOf(*this).columns;
  return column >= 0 && column < static_cast<int>(columns.size()) ? columns[column].text : std::wstring();
}

void CHeaderCtrl::SetItemText(int column, const std::wstring& text) {
  auto& columns = dataOf(*this).columns;
  if (column < 0 || column >= static_cast<int>(columns.size())) return;
  columns[column].text = text;
  host::ui::backend().windowChanged(*this);
}

void CHeaderCtrl::SetSortMark(int column, int mark) {
  WindowData& d = dataOf(*this);
  if (mark != 0) {
    d.sortColumn = column;
    d.sortMark = mark;
  } else if (column == d.sortColumn) {
    d.sortColumn = -1;
    d.sortMark = 0;
  }
  if (d.created) host::ui::backend().windowChanged(*this);
}

int CHeaderCtrl::GetSortMark(int column) const {
  return column == dataOf(*this).sortColumn ? dataOf(*this).sortMark : 0;
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const {
  for (const auto& slot : dataOf(*this).children)
    if (dataOf(*slot.window).kind == ui::ControlKind::Header) return static_cast<CHeaderCtrl*>(slot.window);
  return nullptr;
}

int CListCtrl::InsertColumn(int column, const std::wstring& heading, int format, int width) {
  CHeaderCtrl* header = GetHeaderCtrl();
  if (header == nullptr || column < 0) return -1;
  auto& columns = dataOf(*header).columns;
  column = std::min(column, static_cast<int>(columns.size()));
  if (width < 0) width = GetStringWidth(heading) + 12;
  columns.insert(columns.begin() + column, ui::detail::Column{heading, format, width});
  for (auto& row : dataOf(*this).itemTexts)
    if (static_cast<int>(row.size()) > column) row.insert(row.begin() + column, std::wstring());
  WindowData& h = dataOf(*header);
  if (h.sortColumn >= column) ++h.sortColumn;
  host::ui::backend().windowChanged(*this);
  return column;
}

bool CListCtrl::DeleteColumn(int column) {
  if (!validColumn(*this, column)) return false;
  auto& columns = columnsOf(*this);
  columns.erase(columns.begin() + column);
  for (auto& row : dataOf(*this).itemTexts)
    if (static_cast<int>(row.size()) > column) row.erase(row.begin() + column);
  WindowData& h = dataOf(*GetHeaderCtrl());
  if (h.sortColumn == column) {
    h.sortColumn = -1;
    h.sortMark = 0;
  } else if (h.sortColumn > column) {
    --h.sortColumn;
  }
  host::ui::backend().windowChanged(*this);
  return true;
}

int CListCtrl::GetColumnCount() const { return static_cast<int>(columnsOf(*this).size()); }

int CListCtrl::GetColumnWidth(int column) const {
  return validColumn(*this, column) ? columnsOf(*this)[column].width : 0;
}

bool CListCtrl::SetColumnWidth(int column, int width) {
  if (!validColumn(*this, column)) return false;
  columnsOf(*this)[column].width = std::max(0, width);
  host::ui::backend().windowChanged(*this);
  return true;
}

int CListCtrl::GetColumnFormat(int column) const {
  return validColumn(*this, column) ? columnsOf(*this)[column].format : LVCFMT_LEFT;
}

void CListCtrl::SetItemCount(int count) {
  if (isVirtual(*this)) SetItemCountEx(count);
}

void CListCtrl::SetItemCountEx(int count, unsigned) {
  if (!isVirtual(*this)) return;
  WindowData& d = dataOf(*this);
  d.itemCount = std::max(0, count);
  d.itemStates.resize(static_cast<std::size_t>(d.itemCount), 0);
  host::ui::backend().windowChanged(*this);
}

int CListCtrl::GetItemCount() const {
  const WindowData& d = dataOf(*this);
  return isVirtual(*this) ? d.itemCount : static_cast<int>(d.itemTexts.size());
}

int CListCtrl::InsertItem(int row, const std::wstring& text) {
  WindowData& d = dataOf(*this);
  if (isVirtual(*this) || row < 0) return -1;
  row = std::min(row, static_cast<int>(d.itemTexts.size()));
  d.itemTexts.insert(d.itemTexts.begin() + row, std::vector<std::wstring>{text});
  d.itemStates.insert(d.itemStates.begin() + row, 0);
  host::ui::backend().windowChanged(*this);
  return row;
}

bool CListCtrl::SetItemText(int row, int column, const std::wstring& text) {
  WindowData& d = dataOf(*this);
  if (isVirtual(*this) || row < 0 || row >= static_cast<int>(d.itemTexts.size()) || column < 0) return false;
  auto& cells = d.itemTexts[row];
  if (static_cast<int>(cells.size()) <= column) cells.resize(static_cast<std::size_t>(column) + 1);
  cells[column] = text;
  host::ui::backend().windowChanged(*this);
  return true;
}

bool CListCtrl::DeleteItem(int row) {
  WindowData& d = dataOf(*this);
  if (isVirtual(*this) || row < 0 || row >= static_cast<int>(d.itemTexts.size())) return false;
  d.itemTexts.erase(d.itemTexts.begin() + row);
  d.itemStates.erase(d.itemStates.begin() + row);
  host::ui::backend().windowChanged(*this);
  return true;
}

bool CListCtrl::DeleteAllItems() {
  WindowData& d = dataOf(*this);
  d.itemTexts.clear();
  d.itemStates.clear();
  d.itemCount = 0;
  host::ui::backend().windowChanged(*this);
  return true;
}

std::wstring CListCtrl::GetItemText(int row, int column) {
  if (row < 0 || row >= GetItemCount() || column < 0) return {};
  if (!isVirtual(*this)) {
    const auto& cells = dataOf(*this).itemTexts[row];
    return column < static_cast<int>(cells.size()) ? cells[column] : std::wstring();
  }
  std::wstring text;
  ui::UiNotify notify;
  notify.code = LVN_GETDISPINFO;
  notify.row = row;
  notify.col = column;
  notify.text = &text;
  ui::detail::sendNotify(*this, notify);
  return text;
}

std::wstring CListCtrl::GetCellDisplayText(int row, int column) { return GetItemText(row, column); }

unsigned CListCtrl::GetItemState(int row, unsigned mask) const {
  const auto& states = dataOf(*this).itemStates;
  return row >= 0 && row < static_cast<int>(states.size()) ? states[row] & mask : 0;
}

bool CListCtrl::SetItemState(int row, unsigned state, unsigned mask) {
  const int count = GetItemCount();
  if (row < -1 || row >= count) return false;
  // Row -1 is every row. Each row whose state changes is reported, as the classic list does.
  const int first = row < 0 ? 0 : row;
  const int last = row < 0 ? count - 1 : row;
  // An owner may close the dialog on a notification; then nothing of this list may be touched any more.
  auto stillHere = [this] { return ui::detail::isAlive(this) && GetSafeHwnd() != nullptr; };
  for (int r = first; r <= last && stillHere() && r < GetItemCount(); ++r) {
    auto& states = dataOf(*this).itemStates;
    const unsigned before = states[r];
    const unsigned after = (before & ~mask) | (state & mask);
    if (after == before) continue;
    if ((after & LVIS_FOCUSED) != 0)
      for (unsigned& other : states) other &= ~LVIS_FOCUSED;
    states[r] = after;
    ui::UiNotify notify;
    notify.code = LVN_ITEMCHANGED;
    notify.row = r;
    notify.oldState = before;
    notify.newState = after;
    ui::detail::sendNotify(*this, notify);
  }
  if (stillHere()) host::ui::backend().windowChanged(*this);
  return true;
}

int CListCtrl::GetNextItem(int start, unsigned flags) const {
  const auto& states = dataOf(*this).itemStates;
  for (int row = std::max(0, start + 1); row < GetItemCount(); ++row) {
    const unsigned state = states[row];
    if ((flags & LVNI_SELECTED) != 0 && (state & LVIS_SELECTED) == 0) continue;
    if ((flags & LVNI_FOCUSED) != 0 && (state & LVIS_FOCUSED) == 0) continue;
    return row;
  }
  return -1;
}

int CListCtrl::GetSelectedCount() const {
  const auto& states = dataOf(*this).itemStates;
  return static_cast<int>(
      std::count_if(states.begin(), states.end(), [](unsigned s) { return (s & LVIS_SELECTED) != 0; }));
}

bool CListCtrl::EnsureVisible(int row, bool) { return row >= 0 && row < GetItemCount(); }

bool CListCtrl::RedrawItems(int first, int last) {
  if (first > last) return false;
  Invalidate();
  return true;
}

unsigned CListCtrl::GetExtendedStyle() const { return dataOf(*this).extendedStyle; }
void CListCtrl::SetExtendedStyle(unsigned style) { dataOf(*this).extendedStyle = style; }
int CListCtrl::GetStringWidth(const std::wstring& text) const { return GetTextWidth(text); }
