// The main window: menu, drawing view, command line with its history and the running prompt (its keywords
// as buttons), the status bar with the cursor's world coordinates, and the module's toolbars.
#pragma once

#include "host/editor/Input.h"
#include "host/gui/DrawingCanvas.h"
#include "sdk/ui/Resources.h"

#include <wx/aui/framemanager.h>
#include <wx/filehistory.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <map>
#include <string>
#include <vector>

class wxAuiToolBar;

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
  // A toolbar of the module (`key` names it), as a bar the user can dock on any side of the window or float:
  // its buttons (with their pictures, where the resource has them) start the commands they stand for, its
  // title shows on the bar while it floats. Made on the first call, brought up to date on later ones.
  wxAuiToolBar* showToolbar(const void* key, const ::ui::ToolbarTemplate& bar, const std::wstring& title,
                            bool visible);
  void removeToolbar(const void* key);
  // The shown toolbar with a button for `command`; null when none has one.
  wxAuiToolBar* toolbarWith(int command);
  // True once the user closed the window (or chose Exit) until mayClose lets the window stay.
  bool closing() const { return closing_; }
  // At the command line after a close: asks whether to save a changed drawing ("Ja" saves, "Nein" drops the
  // changes, "Abbrechen" keeps the window open). False when the window stays open.
  bool mayClose();
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
  // Saves the drawing (to its own file when `path` is empty); a failure is shown and answers false.
  bool saveTo(const std::string& path);
  // Before the drawing goes: true when it has no unsaved changes or the user saved or dropped them.
  bool settleChanges();
  bool commandRunning();
  // The menu of a toolbar: dock it on a side of the window or let it float.
  void placeToolbar(wxAuiToolBar& bar, const wxPoint& at);
  void updateTitle();

  struct Toolbar {
    wxAuiToolBar* bar = nullptr;
    std::vector<int> commands;
  };

  wxAuiManager docking_;
  wxPanel* body_ = nullptr;
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
  std::map<const void*, Toolbar> toolbars_;
};

MainFrame* mainFrame();

// The answer the window has for the waiting prompt: typed, clicked or picked.
void deliverInput(editor::Input input);
bool hasDeliveredInput();
editor::Input takeDeliveredInput();

}  // namespace host::gui
