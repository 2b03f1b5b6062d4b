#include "ui/CListCtrlPrintJob.h"

#include "sdk/ui/MessageBox.h"
#include "ui/CListCtrlEx.h"

ui::PrintTable CListCtrlPrintJob::Collect() const {
  ui::PrintTable table;
  CWnd* owner = m_list.GetParent();
  table.title = owner != nullptr ? owner->GetWindowText() : std::wstring();
  const int columns = m_list.GetColumnCount();
  for (int column = 0; column < columns; ++column) {
    ui::PrintColumn printed;
    int alignment = 0;
    int width = 0;
    if (m_list.GetColumnHeader(printed.header, alignment, width, column)) {
      printed.format = alignment == 1 ? LVCFMT_RIGHT : LVCFMT_LEFT;
    }
    printed.width = m_list.GetColumnWidth(column);
    table.columns.push_back(std::move(printed));
  }
  wchar_t buffer[CListCtrlEx::kCellBufferLength + 1];
  table.rows.reserve(static_cast<std::size_t>(m_list.RowCount()));
  for (int row = 0; row < m_list.RowCount(); ++row) {
    std::vector<std::wstring> cells;
    for (int column = 0; column < columns; ++column) {
      buffer[0] = L'\0';
      std::wstring text;
      if (m_list.GetCellText(buffer, CListCtrlEx::kCellBufferLength, m_list.RowData(row), row, column)) {
        buffer[CListCtrlEx::kCellBufferLength] = L'\0';
        text = buffer;
      }
      if (text == CListCtrlEx::kCheckMarker) text = m_list.GetCheckState(row, column, 0) ? L"x" : L"";
      cells.push_back(std::move(text));
    }
    table.rows.push_back(std::move(cells));
  }
  return table;
}

ui::PrintResult CListCtrlPrintJob::Run() {
  std::wstring error;
  const ui::PrintResult result = AfxPrintTable(Collect(), error);
  if (result == ui::PrintResult::Failed) AfxMessageBox(error, MB_OK | MB_ICONEXCLAMATION);
  return result;
}
