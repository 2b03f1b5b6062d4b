// What the dialog framework needs from a window system. The headless backend (host/headless) answers from the
// script; a windowed backend shows real windows, mirrors the framework's window state and reports the user's
// actions through UserActions.h.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/CDialog.h"
#include "sdk/ui/CFileDialog.h"
#include "sdk/ui/PrintService.h"
#include "sdk/ui/Resources.h"

namespace host::ui {

class UiBackend {
 public:
  virtual ~UiBackend() = default;

  // The id of the button chosen (IDOK, IDYES, ...).
  virtual int messageBox(const std::wstring& text, const std::wstring& caption, unsigned type) = 0;
  // True with `path` set when the user chose a file.
  virtual bool fileDialog(const CFileDialog& dialog, std::wstring& path) = 0;
  // The chosen command, 0 when the menu was dismissed.
  virtual int trackPopupMenu(const std::vector<::ui::MenuItem>& items, CWnd* owner) = 0;
  // Lets the user work with the modal dialog until its modal loop has ended (EndDialog).
  virtual void runModalLoop(CDialog& dialog) = 0;
  virtual void beep(unsigned frequencyHz, unsigned durationMs) = 0;
  virtual void messageBeep(unsigned type) = 0;
  virtual void setWaitCursor(bool shown) = 0;
  virtual int textWidth(const CWnd* window, const std::wstring& text) = 0;
  // Average character width and height of a dialog's font: a dialog unit is a quarter of the width and an
  // eighth of the height.
  virtual CSize dialogBaseUnits(const CWnd* dialog) = 0;
  // The client area of `window` where the screen decides it (a list's rows lose room to its border and scroll
  // bar): true with `size` set; false leaves the size the framework's rectangle gives.
  virtual bool clientSize(const CWnd& window, CSize& size) {
    (void)window;
    (void)size;
    return false;
  }
  // Printing (AfxPrintTable): ask the user for a printer or file (print dialog; headless: "@answer print"),
  // then print `table` page by page with title, column headers, rows and the page number "N / M". Answers
  // Cancelled when the user declines, Failed with `error` set when the pages could not be produced.
  virtual ::ui::PrintResult printTable(const ::ui::PrintTable& table, std::wstring& error) = 0;
  // The version of the list view the backend provides, as major * 65536 + minor. Both real backends provide
  // everything the module's lists use and report 6.0; a test backend reports an older one.
  virtual unsigned commonControlsVersion() { return 6u * 65536u; }

  // Window state changes, for a backend that mirrors them on screen.
  virtual void windowCreated(CWnd&) {}
  virtual void windowChanged(CWnd&) {}
  virtual void windowDestroyed(CWnd&) {}
};

// The backend in use: the headless one unless another was installed.
UiBackend& backend();
// Installs a backend (not owned); null goes back to the headless one.
void setBackend(UiBackend* backend);

}  // namespace host::ui
