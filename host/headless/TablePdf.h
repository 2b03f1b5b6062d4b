// A table printed to a PDF file: A4 portrait, on every page the title, the column headers over a rule, as many
// rows as fit and the page number "N / M" at the foot. The headless backend prints this way; it is a real PDF
// (cairo), so any reader shows it and pdftotext reads its text back.
#pragma once

#include <string>

#include "sdk/ui/PrintService.h"

namespace host::headless {

// Rows that fit on one page.
int tableRowsPerPage();
// Pages the table needs: at least one, so an empty list still prints its header.
int tablePageCount(const ::ui::PrintTable& table);

// Writes the PDF to `path` (UTF-8). False with `error` set when the file cannot be written; a file that could
// not be completed is removed, never left half-written.
bool writeTablePdf(const ::ui::PrintTable& table, const std::string& path, std::string& error);

}  // namespace host::headless
