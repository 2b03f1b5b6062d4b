// The headless backend of the dialog framework: windows live only in memory, text is measured with an average
// character of 6 pixels (dialog base units 6 x 13), and the running script is the user. What the user is asked
// and answers goes to the transcript, one line each, line breaks in texts written as \n:
//
//   [message] "TEXT" (yes/no) -> yes            a message box: its buttons, then the answer
//   [message "CAPTION"] "TEXT" (ok) -> ok       the same with a caption of its own
//   [file save] "FILTER" -> PATH                a file dialog ("file open" for opening), or -> cancel
//   [beep 1000 Hz 50 ms]                        Beep(); MessageBeep() writes [beep]
//   [print] "TITLE" -> PATH (2 pages)           a print dialog answered with a PDF file, or -> cancel
//
// Answers: a message box takes the next "@answer message ..." queued before it; without one, a box with only OK
// is answered OK, and any other box (like a file dialog without a queued "@answer file ...") takes the script's
// next lines: user-interface lines are carried out (an "@answer" among them answers it), Escape or the end of
// the script cancel (Cancel, else No), an empty line presses the first button, and command-line text is an error.
// A print dialog is answered like a file dialog, by "@answer print PATH|cancel"; the pages go to a PDF at PATH.
// A modal dialog takes the script's next lines the same way until it closes; Escape, or the end of the script,
// cancels it, and an empty line presses its default button.
#pragma once

#include <deque>
#include <optional>
#include <string>

#include "host/ui/UiBackend.h"

namespace host::headless {

class HeadlessUi : public host::ui::UiBackend {
 public:
  static HeadlessUi& instance();

  // Answers for the next file dialog (nullopt: cancel) and the next message box (IDOK, IDYES, ...).
  void queueFileAnswer(std::optional<std::wstring> path);
  void queueMessageAnswer(int id);
  // The answer for the next print dialog: a PDF file to print to (nullopt: cancel).
  void queuePrintAnswer(std::optional<std::wstring> path);
  // The entry that the next context menu picks; after it was tracked, menuOutcome() tells what happened:
  // empty when the entry was chosen, otherwise why not.
  void chooseMenuEntry(int id);
  std::optional<std::string> menuOutcome();
  // Forgets queued answers and a pending menu choice.
  void reset();
  bool waitCursorShown() const { return waitCursor_; }

  int messageBox(const std::wstring& text, const std::wstring& caption, unsigned type) override;
  bool fileDialog(const CFileDialog& dialog, std::wstring& path) override;
  int trackPopupMenu(const std::vector<::ui::MenuItem>& items, CWnd* owner) override;
  void runModalLoop(CDialog& dialog) override;
  void beep(unsigned frequencyHz, unsigned durationMs) override;
  void messageBeep(unsigned type) override;
  void setWaitCursor(bool shown) override { waitCursor_ = shown; }
  int textWidth(const CWnd* window, const std::wstring& text) override;
  CSize dialogBaseUnits(const CWnd* dialog) override;
  ::ui::PrintResult printTable(const ::ui::PrintTable& table, std::wstring& error) override;

 private:
  std::deque<std::optional<std::wstring>> fileAnswers_;
  std::deque<int> messageAnswers_;
  std::deque<std::optional<std::wstring>> printAnswers_;
  std::optional<int> menuChoice_;
  std::optional<std::string> menuOutcome_;
  bool waitCursor_ = false;
};

// UTF-8 with line breaks written as \n and \r, for one-line transcript entries.
std::string escapeForTranscript(const std::wstring& text);

}  // namespace host::headless
