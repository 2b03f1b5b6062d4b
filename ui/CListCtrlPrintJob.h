// Printing an extended list: the header texts and the cell texts as the list answers them, check boxes as
// "x", handed to the framework's print service, which asks for the printer and lays out the pages.
#pragma once

#include "sdk/ui/PrintService.h"

class CListCtrlEx;

class CListCtrlPrintJob {
 public:
  explicit CListCtrlPrintJob(CListCtrlEx& list) : m_list(list) {}
  virtual ~CListCtrlPrintJob() = default;
  CListCtrlPrintJob(const CListCtrlPrintJob&) = delete;
  CListCtrlPrintJob& operator=(const CListCtrlPrintJob&) = delete;

  // The table as it is printed: title (the dialog's title), headers with the widths on screen, rows.
  ui::PrintTable Collect() const;
  // Prints; a print that fails is reported in a message box, a cancelled one is not.
  ui::PrintResult Run();

 private:
  CListCtrlEx& m_list;
};
