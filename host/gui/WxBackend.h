// The dialog framework on wxWidgets: every framework window gets a real widget (dialogs from their templates,
// dialog units turned into pixels with the real font), the widgets follow the framework's state, and what the
// user does with them goes back through the same user actions a headless script uses. Message boxes, file
// dialogs and context menus are the toolkit's own; their answers are written to the transcript as headless.
//
// While a script drives the window, message boxes, file dialogs and context menus take the script's answers
// exactly as headless does, so that one script gives one transcript on both backends.
#pragma once

#include "host/ui/UiBackend.h"

#include <functional>
#include <string>
#include <unordered_map>

class wxWindow;

namespace host::gui {

// The toolkit's report list draws a cell's text inside margins of its own, on both sides. Its columns are
// wider than the framework's by these margins, so that a column has the framework's width for its text.
inline constexpr int kListTextMargins = 12;

class WxBackend : public host::ui::UiBackend {
 public:
  static WxBackend& instance();

  int messageBox(const std::wstring& text, const std::wstring& caption, unsigned type) override;
  bool fileDialog(const CFileDialog& dialog, std::wstring& path) override;
  // A question of the host with the buttons Yes, No and Cancel under labels of its own; answers IDYES, IDNO
  // or IDCANCEL, and the transcript shows it as any message box.
  int askYesNoCancel(const std::wstring& text, const std::wstring& caption, const std::wstring& yes,
                     const std::wstring& no, const std::wstring& cancel);
  int trackPopupMenu(const std::vector<::ui::MenuItem>& items, CWnd* owner) override;
  void runModalLoop(CDialog& dialog) override;
  void beep(unsigned frequencyHz, unsigned durationMs) override;
  void messageBeep(unsigned type) override;
  void setWaitCursor(bool shown) override;
  int textWidth(const CWnd* window, const std::wstring& text) override;
  CSize dialogBaseUnits(const CWnd* dialog) override;
  bool clientSize(const CWnd& window, CSize& size) override;
  ::ui::PrintResult printTable(const ::ui::PrintTable& table, std::wstring& error) override;

  void windowCreated(CWnd& window) override;
  void windowChanged(CWnd& window) override;
  void windowDestroyed(CWnd& window) override;

  // The widget that shows a framework window (null when none does).
  wxWindow* widgetOf(const CWnd& window) const;

  // A modal dialog of a script run takes the script's lines through this (the window's script driver).
  std::function<bool()> scriptStep;

  // The first failure of a user action inside an event handler, for the script driver to report; empty when
  // none happened since the last call.
  std::string takeFailure();
  // Runs a user action from an event handler: a failure never unwinds through the toolkit.
  void act(const std::function<void()>& action);

 private:
  void sync(CWnd& window, wxWindow& widget);
  void syncList(CWnd& list, wxWindow& widget);
  void bindEvents(CWnd& window, wxWindow& widget);

  // By window handle: the handle stays when a module object takes the window over from the framework's own.
  std::unordered_map<const void*, wxWindow*> widgets_;
  int syncing_ = 0;
  bool busy_ = false;
  std::string failure_;
};

}  // namespace host::gui
