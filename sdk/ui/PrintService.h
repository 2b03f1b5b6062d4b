// Printing a table (a list as the user sees it) through the UI framework. The framework asks the user where to
// print (the print dialog of the window system; headless, the script's "@answer print PATH|cancel"), lays the
// table out on pages and prints it: every page carries the title, the column headers, as many rows as fit and
// its page number ("N / M" at the foot). Column widths follow the widths on screen, scaled to the page.
// Called from a worker thread, the print runs on the UI thread and the worker waits.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/UiTypes.h"

namespace ui {

struct PrintColumn {
  std::wstring header;
  int format = LVCFMT_LEFT;  // LVCFMT_LEFT or LVCFMT_RIGHT
  int width = 0;             // on screen, in pixels: only the proportions matter on paper
};

struct PrintTable {
  std::wstring title;                           // the document's name: print queue, PDF title, top of each page
  std::vector<PrintColumn> columns;
  std::vector<std::vector<std::wstring>> rows;  // cell texts in column order; missing cells print empty
};

enum class PrintResult {
  Printed,
  Cancelled,  // the user closed the print dialog: nothing printed, nothing to report
  Failed,     // chosen but not printed (printer or file not writable); the error says why
};

}  // namespace ui

// Asks the user for the printer and prints `table`. `error` is set for PrintResult::Failed.
ui::PrintResult AfxPrintTable(const ui::PrintTable& table, std::wstring& error);
