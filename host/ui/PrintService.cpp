// Printing and the list control's version: both are the backend's to answer.
#include "sdk/ui/PrintService.h"

#include "host/ui/UiBackend.h"
#include "host/ui/UiThread.h"
#include "sdk/ui/CListCtrl.h"

ui::PrintResult AfxPrintTable(const ui::PrintTable& table, std::wstring& error) {
  ui::PrintResult result = ui::PrintResult::Cancelled;
  error.clear();
  host::ui::runOnUiThread([&] { result = host::ui::backend().printTable(table, error); });
  return result;
}

unsigned AfxGetCommonControlsVersion() { return host::ui::backend().commonControlsVersion(); }
