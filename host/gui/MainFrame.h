// The main window: menu, drawing view, command line with its history and the running prompt (its keywords
// as buttons), the status bar with the cursor's world coordinates, and the module's toolbars.
#pragma once

#include "host/editor/Input.h"
#include "host/gui/DrawingCanvas.h"
#include "sdk/ui/Resources.h"

#include <wx/filehistory.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>

#include <string>
#include <vector>

namespace host::gui {

class MainFrame : public wxFrame {
 public:
  MainFrame();
  ~MainFrame() override;

  DrawingCanvas& canvas() { return *canvas_; }
  // Shows the prompt that waits now (from the editor), with its keywords as buttons.
  void showPrompt();
  // The drawing after a command or an open: the view draws it again (keeping the zoom unless it is another one).
  void refreshDrawing(bool keepView);
  // Appends transcript text to the command-line history.
  void appendHistory(const std::string& utf8);
  // Types `text` into the command line and presses Enter, as a person would.
  void typeCommand(const wxString& text);
  // The command line's text box (for keys a script types).
  wxTextCtrl& commandLine() { return *entry_; }
  // A toolbar of the module: its buttons (with their pictures, where the resource has them) start the commands
  // they stand for.
  wxToolBar* addToolbar(const ::ui::ToolbarTemplate& bar);
  bool closing() const { return closing_; }
  // F3: object snap on or off, from the main window or a dialog beside it.
  void toggleSnap();

 private:
  void buildMenu();
  void onEnter(wxCommandEvent&);
  void onCharHook(wxKeyEvent&);
  void onOpen(wxCommandEvent&);
  void onSave(wxCommandEvent&);
  void onSaveAs(wxCommandEvent&);
  void onRecent(wxCommandEvent&);
  void onClose(wxCloseEvent&);
  void openFile(const std::string& path);
  void saveTo(const std::string& path);
  bool commandRunning();
  void updateTitle();

  DrawingCanvas* canvas_ = nullptr;
  wxTextCtrl* history_ = nullptr;
  wxStaticText* prompt_ = nullptr;
  wxPanel* keywords_ = nullptr;
  wxTextCtrl* entry_ = nullptr;
  wxFileHistory recent_;
  std::vector<wxString> typed_;
  std::size_t recall_ = 0;
  std::wstring shownPrompt_;
  const void* shownDocument_ = nullptr;
  bool closing_ = false;
  std::vector<int> toolbarCommands_;
};

MainFrame* mainFrame();

// The answer the window has for the waiting prompt: typed, clicked or picked.
void deliverInput(editor::Input input);
bool hasDeliveredInput();
editor::Input takeDeliveredInput();

}  // namespace host::gui
