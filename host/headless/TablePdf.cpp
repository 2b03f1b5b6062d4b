#include "host/headless/TablePdf.h"

#include <cairo-pdf.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "host/WideText.h"

namespace host::headless {
namespace {

// A4 portrait in points, margins of 15 mm.
constexpr double kPageWidth = 595.276;
constexpr double kPageHeight = 841.890;
constexpr double kMargin = 42.5;
constexpr double kTitleBaseline = kMargin + 12.0;
constexpr double kHeaderBaseline = kMargin + 34.0;
constexpr double kBodyTop = kHeaderBaseline + 8.0;
constexpr double kFooterBaseline = kPageHeight - kMargin;
constexpr double kBodyBottom = kFooterBaseline - 20.0;
constexpr double kRowHeight = 13.0;
constexpr double kCellPadding = 3.0;
constexpr const char* kFont = "DejaVu Sans";

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

struct ColumnBox {
  double left = 0.0;
  double width = 0.0;
  bool right = false;
};

std::vector<ColumnBox> layoutColumns(const ::ui::PrintTable& table) {
  std::vector<ColumnBox> boxes;
  const double available = kPageWidth - 2.0 * kMargin;
  double total = 0.0;
  for (const auto& column : table.columns) total += std::max(0, column.width);
  double left = kMargin;
  for (const auto& column : table.columns) {
    const double share = total > 0.0 ? std::max(0, column.width) / total
                                     : 1.0 / static_cast<double>(table.columns.size());
    boxes.push_back({left, available * share, column.format == LVCFMT_RIGHT});
    left += available * share;
  }
  return boxes;
}

void setFont(cairo_t* cr, double size, bool bold) {
  cairo_select_font_face(cr, kFont, CAIRO_FONT_SLANT_NORMAL, bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, size);
}

// One cell's text inside its column, cut at the column's edge rather than running into the next one.
void showCell(cairo_t* cr, const ColumnBox& box, double baseline, const std::wstring& text) {
  if (text.empty()) return;
  const std::string utf8 = toUtf8(text);
  cairo_text_extents_t extents;
  cairo_text_extents(cr, utf8.c_str(), &extents);
  const double inner = box.width - 2.0 * kCellPadding;
  double x = box.left + kCellPadding;
  if (box.right) x = std::max(x, box.left + box.width - kCellPadding - extents.x_advance);
  cairo_save(cr);
  cairo_rectangle(cr, box.left + kCellPadding, baseline - kRowHeight, std::max(0.0, inner), kRowHeight + 4.0);
  cairo_clip(cr);
  cairo_move_to(cr, x, baseline);
  cairo_show_text(cr, utf8.c_str());
  cairo_restore(cr);
}

void drawPage(cairo_t* cr, const ::ui::PrintTable& table, const std::vector<ColumnBox>& boxes, int page,
              int pages) {
  cairo_set_source_rgb(cr, 0.0, 0.0, 0.0);
  setFont(cr, 12.0, true);
  cairo_move_to(cr, kMargin, kTitleBaseline);
  cairo_show_text(cr, toUtf8(table.title).c_str());

  setFont(cr, 9.0, true);
  for (std::size_t c = 0; c < boxes.size(); ++c) showCell(cr, boxes[c], kHeaderBaseline, table.columns[c].header);
  cairo_set_line_width(cr, 0.6);
  cairo_move_to(cr, kMargin, kHeaderBaseline + 4.0);
  cairo_line_to(cr, kPageWidth - kMargin, kHeaderBaseline + 4.0);
  cairo_stroke(cr);

  setFont(cr, 9.0, false);
  const int perPage = tableRowsPerPage();
  const std::size_t first = static_cast<std::size_t>(page) * static_cast<std::size_t>(perPage);
  const std::size_t last = std::min(table.rows.size(), first + static_cast<std::size_t>(perPage));
  double baseline = kBodyTop + kRowHeight - 3.0;
  for (std::size_t r = first; r < last; ++r, baseline += kRowHeight) {
    const auto& cells = table.rows[r];
    for (std::size_t c = 0; c < boxes.size() && c < cells.size(); ++c) showCell(cr, boxes[c], baseline, cells[c]);
  }

  const std::string number = std::to_string(page + 1) + " / " + std::to_string(pages);
  cairo_text_extents_t extents;
  cairo_text_extents(cr, number.c_str(), &extents);
  cairo_move_to(cr, (kPageWidth - extents.x_advance) / 2.0, kFooterBaseline);
  cairo_show_text(cr, number.c_str());
  cairo_show_page(cr);
}

std::string cairoError(cairo_status_t status) { return cairo_status_to_string(status); }

// cairo and fontconfig keep font caches for the life of the process. Once the headless host has printed, it
// hands them back when the process ends, so that a leak check of the host sees only its own memory. (Only the
// headless backend prints this way; a window backend's toolkit owns fontconfig there.)
void releaseFontCachesAtExit() {
  static const bool registered = [] {
    std::atexit([] {
      cairo_debug_reset_static_data();
      FcFini();
    });
    return true;
  }();
  (void)registered;
}

}  // namespace

int tableRowsPerPage() { return static_cast<int>((kBodyBottom - kBodyTop) / kRowHeight); }

int tablePageCount(const ::ui::PrintTable& table) {
  const auto perPage = static_cast<std::size_t>(tableRowsPerPage());
  return static_cast<int>(std::max<std::size_t>(1, (table.rows.size() + perPage - 1) / perPage));
}

bool writeTablePdf(const ::ui::PrintTable& table, const std::string& path, std::string& error) {
  // The pages go to a file beside the target that replaces it once complete.
  const std::string temporary = path + ".part";
  releaseFontCachesAtExit();
  const int pages = tablePageCount(table);
  cairo_status_t status = CAIRO_STATUS_SUCCESS;
  {
    Surface surface(cairo_pdf_surface_create(temporary.c_str(), kPageWidth, kPageHeight), cairo_surface_destroy);
    status = cairo_surface_status(surface.get());
    if (status == CAIRO_STATUS_SUCCESS) {
      cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, toUtf8(table.title).c_str());
      Context cr(cairo_create(surface.get()), cairo_destroy);
      const std::vector<ColumnBox> boxes = layoutColumns(table);
      for (int page = 0; page < pages && cairo_status(cr.get()) == CAIRO_STATUS_SUCCESS; ++page)
        drawPage(cr.get(), table, boxes, page, pages);
      status = cairo_status(cr.get());
      cr.reset();
      cairo_surface_finish(surface.get());
      if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface.get());
    }
  }
  if (status != CAIRO_STATUS_SUCCESS) {
    ::unlink(temporary.c_str());
    error = "cannot write " + path + ": " + cairoError(status);
    return false;
  }
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    error = "cannot write " + path + ": " + std::strerror(errno);
    ::unlink(temporary.c_str());
    return false;
  }
  return true;
}

}  // namespace host::headless
