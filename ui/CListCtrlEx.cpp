#include "ui/CListCtrlEx.h"

#include <algorithm>

#include "sdk/ui/CDialog.h"
#include "sdk/ui/CMenu.h"
#include "sdk/ui/MessageBox.h"
#include "ui/CInPlaceEdit.h"
#include "ui/CInPlaceList.h"
#include "ui/CListCtrlPrintJob.h"
#include "ui/ListCtrlExLanguage.h"
#include "ui/ListCtrlExResourceIds.h"
#include "ui/ListQuickSort.h"

namespace {

// The sort context: set just before each sort and read by the reference comparisons. Sorting happens on the
// user-interface thread only and never nests.
CListCtrlEx* gSortList = nullptr;
int gSortColumn = 0;
bool gSortAscending = true;

// The height of a row as the in-place editors are placed; the window backend draws its own rows.
constexpr int kRowHeight = 16;
constexpr unsigned kKeyO = 'O';
constexpr unsigned kKeyP = 'P';

}  // namespace

int CListCtrlExDataReference::Compare(const CListCtrlExDataReference& other) const {
  if (gSortList == nullptr) return 0;
  const int result = gSortList->CompareItems(gSortColumn, m_data, other.m_data);
  if (gSortAscending) return result;
  return result > 0 ? -1 : (result < 0 ? 1 : 0);
}

CListCtrlEx* CListCtrlEx::SortingList() { return gSortList; }
int CListCtrlEx::SortingColumn() { return gSortColumn; }
bool CListCtrlEx::SortingAscending() { return gSortAscending; }

CListCtrlEx::CListCtrlEx() = default;

CListCtrlEx::~CListCtrlEx() {
  if (gSortList == this) gSortList = nullptr;
}

void* CListCtrlEx::GetFirstItem() { return nullptr; }
void* CListCtrlEx::GetNextItem(void*) { return nullptr; }
bool CListCtrlEx::GetColumnHeader(std::wstring&, int&, int&, int) { return false; }
bool CListCtrlEx::GetCellText(wchar_t*, int, void*, int, int) { return false; }
bool CListCtrlEx::GetCheckState(int, int, int) { return true; }
bool CListCtrlEx::DeleteDataItem(int) { return false; }
bool CListCtrlEx::IsColumnSortable(int) { return false; }
int CListCtrlEx::CompareItems(int, void*, void*) { return 0; }
void CListCtrlEx::OnDestroyList() {}
int CListCtrlEx::GetCellEditKind(int, int) { return kEditNone; }
bool CListCtrlEx::GetCellChoices(int, int, std::vector<std::wstring>&) { return false; }
bool CListCtrlEx::SetCellText(int, int, const std::wstring&) { return false; }

void CListCtrlEx::Refresh() {
  std::vector<CListCtrlExDataReference> rows;
  for (void* item = GetFirstItem(); item != nullptr; item = GetNextItem(item)) rows.emplace_back(item);
  SetRows(std::move(rows));
  m_rowsInSourceOrder = true;
}

void CListCtrlEx::AppendRow(void* data) {
  m_rows.emplace_back(data);
  if (GetSafeHwnd() != nullptr) UpdateRowCount();
}

void CListCtrlEx::PreSubclassWindow() {
  CListCtrl::PreSubclassWindow();
  if (!m_styleSet) {
    ModifyStyle(0, LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED);
    m_styleSet = true;
  }
  CHeaderCtrl* header = GetHeaderCtrl();
  if (header != nullptr && header != &m_header) m_header.SubclassWindow(header->GetSafeHwnd());
  CheckCommonControls();
}

void CListCtrlEx::OnDestroy() {
  if (m_editor != nullptr) EndEdit(false);
  CListCtrl::OnDestroy();
}

void CListCtrlEx::PostNcDestroy() {
  if (m_keepOnDestroy) return;
  OnDestroyList();
  m_rows.clear();
  m_selection.clear();
  CListCtrl::PostNcDestroy();
}

int CListCtrlEx::InsertColumnsFromHeaders() {
  int inserted = 0;
  for (int column = GetColumnCount();; ++column) {
    std::wstring text;
    int alignment = 0;
    int width = 0;
    if (!GetColumnHeader(text, alignment, width, column)) break;
    if (InsertColumn(column, text, alignment == 1 ? LVCFMT_RIGHT : LVCFMT_LEFT, width) < 0) break;
    ++inserted;
  }
  return inserted;
}

void* CListCtrlEx::RowData(int row) const {
  return row >= 0 && row < RowCount() ? m_rows[static_cast<std::size_t>(row)].Data() : nullptr;
}

int CListCtrlEx::FindRow(const void* data) const {
  for (std::size_t row = 0; row < m_rows.size(); ++row)
    if (m_rows[row].Data() == data) return static_cast<int>(row);
  return -1;
}

void CListCtrlEx::UpdateRowCount() { SetItemCountEx(RowCount(), LVSICF_NOSCROLL); }

void CListCtrlEx::SetRows(std::vector<CListCtrlExDataReference> rows) {
  Deselect();
  m_rows = std::move(rows);
  // What is gone from the rows is no longer selected.
  std::erase_if(m_selection, [this](const CListCtrlExDataReference& ref) { return FindRow(ref.Data()) < 0; });
  if (GetSafeHwnd() == nullptr) return;
  UpdateRowCount();
  Reselect();
}

void CListCtrlEx::Deselect() {
  if (GetSafeHwnd() == nullptr) return;
  m_syncingSelection = true;
  m_currentRow = -1;
  for (const CListCtrlExDataReference& ref : m_selection) {
    m_currentRow = FindRow(ref.Data());
    if (m_currentRow >= 0) SetItemState(m_currentRow, 0, LVIS_SELECTED);
  }
  m_syncingSelection = false;
}

void CListCtrlEx::Reselect() {
  if (GetSafeHwnd() == nullptr) return;
  m_syncingSelection = true;
  m_currentRow = -1;
  for (const CListCtrlExDataReference& ref : m_selection) {
    m_currentRow = FindRow(ref.Data());
    if (m_currentRow >= 0) SetItemState(m_currentRow, LVIS_SELECTED, LVIS_SELECTED);
  }
  m_syncingSelection = false;
}

void CListCtrlEx::OnItemChanged(const ui::UiNotify& notify) {
  if (m_syncingSelection || notify.row < 0 || notify.row >= RowCount()) return;
  const bool was = (notify.oldState & LVIS_SELECTED) != 0;
  const bool is = (notify.newState & LVIS_SELECTED) != 0;
  if ((notify.newState & LVIS_FOCUSED) != 0) m_currentRow = notify.row;
  if (was == is) return;
  const CListCtrlExDataReference& ref = m_rows[static_cast<std::size_t>(notify.row)];
  const auto at = std::find(m_selection.begin(), m_selection.end(), ref);
  if (is && at == m_selection.end()) m_selection.push_back(ref);
  if (!is && at != m_selection.end()) m_selection.erase(at);
}

int CListCtrlEx::CompareRows(const CListCtrlExDataReference& a, const CListCtrlExDataReference& b) {
  return a.Compare(b);
}

void CListCtrlEx::SortByColumn(int column, bool ascending) {
  Deselect();
  gSortList = this;
  gSortColumn = column;
  gSortAscending = ascending;
  ListQuickSort(m_rows.data(), RowCount(),
                [this](const CListCtrlExDataReference& a, const CListCtrlExDataReference& b) {
                  return CompareRows(a, b) <= 0;
                });
  gSortList = nullptr;
  m_rowsInSourceOrder = false;
  UpdateRowCount();
  Reselect();
  m_header.SetSortImage(column, ascending ? CHeaderCtrlEx::kAscending : CHeaderCtrlEx::kDescending);
  Invalidate();
}

void CListCtrlEx::OnColumnClick(int column) {
  if (!IsColumnSortable(column)) {
    m_header.SetSortImage(column, CHeaderCtrlEx::kNoMark);
    Beep(1000, 50);
    return;
  }
  const bool ascending = !(m_header.SortColumn() == column && m_header.SortMark() == CHeaderCtrlEx::kAscending);
  SortByColumn(column, ascending);
}

void CListCtrlEx::DeleteSelected() {
  if (m_deleteMode != kDeleteAfterAsking && m_deleteMode != kDeleteWithoutAsking) return;
  if (m_selection.empty()) return;
  if (m_deleteMode == kDeleteAfterAsking) {
    const wchar_t* question = LanguageIsGerman() ? L"Selektierte Daten löschen?" : L"Delete Selected Data?";
    if (AfxMessageBox(question, MB_YESNO | MB_ICONQUESTION) != IDYES) return;
  }
  const std::vector<CListCtrlExDataReference> doomed = m_selection;
  bool deleted = false;
  for (const CListCtrlExDataReference& ref : doomed) {
    const int row = FindRow(ref.Data());
    if (row >= 0 && DeleteDataItem(row)) deleted = true;
  }
  if (deleted) Refresh();
  Deselect();
  m_selection.clear();
  m_menuRow = -1;
}

void CListCtrlEx::FitColumns(int column) {
  const int count = GetColumnCount();
  if (count <= 0) return;
  CRect client;
  GetClientRect(client);
  const int clientWidth = client.Width();
  int total = 0;
  for (int c = 0; c < count; ++c) total += GetColumnWidth(c);
  const bool all = column == -1;
  const int own = all ? 0 : GetColumnWidth(column);

  if (all) {
    if (m_redrawSuppressed++ < 1) SetRedraw(false);
  }
  int share = 0;
  int difference = 0;
  if (total >= clientWidth) {
    difference = total - clientWidth;
    if (difference != 0) {
      if (!all) {
        if (own - difference >= 1) SetColumnWidth(column, own - difference);
      } else {
        share = difference / count;
        for (int c = 0; c < count; ++c) {
          const int width = GetColumnWidth(c);
          if (width - share > 10) SetColumnWidth(c, width - share);
        }
        // The remainder goes to the column after the last one, which does not exist: it stays undistributed.
        SetColumnWidth(count, GetColumnWidth(count) - (difference - share * count));
      }
    }
  } else {
    difference = clientWidth - total;
    if (!all) {
      SetColumnWidth(column, own + difference);
    } else {
      share = difference / count;
      for (int c = 0; c < count; ++c) SetColumnWidth(c, GetColumnWidth(c) + share);
      SetColumnWidth(count, GetColumnWidth(count) + (difference - share * count));
    }
  }
  if (all) {
    if (--m_redrawSuppressed <= 0) {
      m_redrawSuppressed = 0;
      SetRedraw(true);
      Invalidate(true);
    }
  }
}

void CListCtrlEx::OnContextMenu(int row, int column) {
  m_menuRow = row;
  m_menuColumn = column;
  CMenu menu;
  {
    CListResourceScope resources;
    if (!menu.LoadMenu(LanguageIsGerman() ? IDR_LIST_MENU_GERMAN : IDR_LIST_MENU_OTHER)) return;
  }
  CMenu* popup = menu.GetSubMenu(0);
  if (popup == nullptr) return;
  const bool canDelete =
      !m_selection.empty() && (m_deleteMode == kDeleteAfterAsking || m_deleteMode == kDeleteWithoutAsking);
  popup->EnableMenuItem(ID_LIST_DELETE, MF_BYCOMMAND | (canDelete ? MF_ENABLED : MF_GRAYED));
  popup->EnableMenuItem(ID_LIST_SORT_ASCENDING, MF_BYCOMMAND | (column >= 0 ? MF_ENABLED : MF_GRAYED));
  popup->EnableMenuItem(ID_LIST_SORT_DESCENDING, MF_BYCOMMAND | (column >= 0 ? MF_ENABLED : MF_GRAYED));
  const int chosen = popup->TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD, 0, 0, this);
  if (chosen != 0) OnCommand(chosen, BN_CLICKED);
}

bool CListCtrlEx::OnCommand(int id, int code) {
  if (code != BN_CLICKED) return CListCtrl::OnCommand(id, code);
  switch (id) {
    case ID_LIST_SORT_ASCENDING: SortByColumn(m_menuColumn, true); return true;
    case ID_LIST_SORT_DESCENDING: SortByColumn(m_menuColumn, false); return true;
    case ID_LIST_SPREADSHEET: ExportToSpreadsheet(); return true;
    case ID_LIST_PRINT: PrintList(); return true;
    case ID_LIST_DELETE: DeleteSelected(); return true;
    default: return CListCtrl::OnCommand(id, code);
  }
}

void CListCtrlEx::OnKeyDownInList(unsigned key, unsigned modifiers) {
  switch (key) {
    case VK_TAB:
      if (!m_keepTab) {
        if (auto* dialog = dynamic_cast<CDialog*>(GetParent())) {
          if ((modifiers & MK_SHIFT) != 0) {
            dialog->PrevDlgCtrl();
          } else {
            dialog->NextDlgCtrl();
          }
        }
      }
      return;
    case VK_PRIOR:
    case VK_UP:
      m_keyboardMove = true;
      m_keyboardUp = true;
      return;
    case VK_NEXT:
    case VK_DOWN:
      m_keyboardMove = true;
      m_keyboardUp = false;
      return;
    case VK_DELETE: DeleteSelected(); return;
    case kKeyO: FitColumns(-1); return;
    case kKeyP: FitColumns(m_menuColumn); return;
    case VK_F2: {
      int row = CListCtrl::GetNextItem(-1, LVNI_FOCUSED);
      if (row < 0) row = m_currentRow;
      for (int column = 0; row >= 0 && column < GetColumnCount(); ++column) {
        if (GetCellEditKind(row, column) != kEditNone) {
          EditCell(row, column);
          return;
        }
      }
      return;
    }
    default: return;
  }
}

bool CListCtrlEx::OnNotifyReflect(ui::UiNotify& notify) {
  switch (notify.code) {
    case LVN_GETDISPINFO: {
      if (notify.text == nullptr) return true;
      notify.text->clear();
      if (notify.row >= 0 && notify.row < RowCount()) {
        wchar_t buffer[kCellBufferLength + 1] = {};
        if (GetCellText(buffer, kCellBufferLength, RowData(notify.row), notify.row, notify.col)) *notify.text = buffer;
      }
      return true;
    }
    case LVN_COLUMNCLICK: OnColumnClick(notify.col); return true;
    case LVN_KEYDOWN: OnKeyDownInList(notify.key, notify.modifiers); return true;
    case NM_RCLICK: OnContextMenu(notify.row, notify.col); return true;
    case NM_DBLCLK:
      if (notify.row < 0 || GetCellEditKind(notify.row, notify.col) == kEditNone) return false;
      EditCell(notify.row, notify.col);
      return true;
    case LVN_ITEMCHANGED: OnItemChanged(notify); return false;
    default: return false;
  }
}

std::wstring CListCtrlEx::GetCellDisplayText(int row, int column) {
  std::wstring text = GetItemText(row, column);
  if (text == kCheckMarker) return GetCheckState(row, column, 0) ? L"[x]" : L"[ ]";
  return text;
}

bool CListCtrlEx::PreTranslateKeyDown(CWnd& target, unsigned key, unsigned modifiers) {
  // Return and Escape belong to an open editor, not to the dialog's default and cancel buttons; Delete and
  // Ctrl combinations edit its text rather than the list.
  if (m_editor != nullptr && &target == m_editor &&
      (key == VK_RETURN || key == VK_DELETE || key == VK_ESCAPE || (modifiers & MK_CONTROL) != 0)) {
    target.OnKeyDown(key, modifiers);
    return true;
  }
  return CListCtrl::PreTranslateKeyDown(target, key, modifiers);
}

CRect CListCtrlEx::CellRect(int row, int column) const {
  int left = 0;
  for (int c = 0; c < column; ++c) left += GetColumnWidth(c);
  const int top = kRowHeight * (row + 1);
  return CRect(left, top, left + GetColumnWidth(column), top + kRowHeight);
}

CWnd* CListCtrlEx::Editor() const { return m_editor; }

void CListCtrlEx::EditCell(int row, int column) {
  if (row < 0 || row >= RowCount() || column < 0 || column >= GetColumnCount()) return;
  if (m_editor != nullptr) EndEdit(true);
  const int kind = GetCellEditKind(row, column);
  if (kind == kEditNone) return;
  EnsureVisible(row, false);
  const std::wstring text = GetItemText(row, column);
  m_editRow = row;
  m_editColumn = column;
  if (kind == kEditText) {
    auto* edit = new CInPlaceEdit(*this);
    m_editor = edit;
    if (!edit->Open(CellRect(row, column), text)) {
      m_editor = nullptr;
      delete edit;
    }
  } else if (kind == kEditChoice) {
    std::vector<std::wstring> choices;
    if (!GetCellChoices(row, column, choices) || choices.empty()) return;
    auto* list = new CInPlaceList(*this);
    m_editor = list;
    if (!list->Open(CellRect(row, column), choices, text)) {
      m_editor = nullptr;
      delete list;
    }
  }
}

void CListCtrlEx::EndEdit(bool accept) {
  if (m_editor == nullptr) return;
  CWnd* editor = m_editor;
  m_editor = nullptr;
  const std::wstring text = editor->GetWindowText();
  const bool hadFocus = CWnd::GetFocus() == editor;
  const int row = m_editRow;
  const int column = m_editColumn;
  m_editRow = m_editColumn = -1;
  editor->DestroyWindow();  // the editor deletes itself
  if (hadFocus && GetSafeHwnd() != nullptr) SetFocus();
  if (accept && row >= 0 && row < RowCount()) SetCellText(row, column, text);
  if (GetSafeHwnd() != nullptr) RedrawItems(row, row);
}

void CListCtrlEx::PrintList() {
  CWaitCursor wait;
  CListCtrlPrintJob job(*this);
  job.Run();
}
