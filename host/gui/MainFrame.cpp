#include "host/gui/MainFrame.h"

#include "host/WideText.h"
#include "host/db/Drawing.h"
#include "host/editor/CommandLine.h"
#include "host/editor/Prompt.h"
#include "host/gui/DrawingChanges.h"
#include "host/gui/WxBackend.h"
#include "host/gui/scene/SceneBuilder.h"
#include "host/headless/ScriptRunner.h"
#include "host/ui/UserActions.h"
#include "sdk/ui/Resources.h"

#include <wx/aui/auibar.h>
#include <wx/button.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/mstream.h>
#include <wx/filedlg.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/statusbr.h>
#include <wx/weakref.h>

#include <charconv>
#include <filesystem>
#include <cwctype>
#include <deque>

namespace host::gui {
namespace {

MainFrame* gFrame = nullptr;
std::deque<editor::Input> gDelivered;

enum MenuId { kZoomExtents = wxID_HIGHEST + 1, kZoomWindow, kZoomPrevious, kSnap };

// The keywords of a prompt: the words between its brackets, separated by slashes.
std::vector<std::wstring> promptKeywords(const std::wstring& prompt) {
  std::vector<std::wstring> words;
  const std::size_t open = prompt.rfind(L'[');
  const std::size_t close = prompt.rfind(L']');
  if (open == std::wstring::npos || close == std::wstring::npos || close < open) return words;
  std::wstring inner = prompt.substr(open + 1, close - open - 1);
  std::size_t start = 0;
  while (start <= inner.size()) {
    const std::size_t slash = inner.find(L'/', start);
    std::wstring word = inner.substr(start, slash == std::wstring::npos ? std::wstring::npos : slash - start);
    if (!word.empty()) words.push_back(word);
    if (slash == std::wstring::npos) break;
    start = slash + 1;
  }
  return words;
}

std::wstring shortest(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return host::fromUtf8(std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer)));
}

}  // namespace

MainFrame* mainFrame() { return gFrame; }

void deliverInput(editor::Input input) { gDelivered.push_back(std::move(input)); }
bool hasDeliveredInput() { return !gDelivered.empty(); }
editor::Input takeDeliveredInput() {
  editor::Input in = std::move(gDelivered.front());
  gDelivered.pop_front();
  return in;
}

MainFrame::MainFrame() : wxFrame(nullptr, wxID_ANY, "cadhost", wxDefaultPosition, wxSize(1200, 800)) {
  gFrame = this;
  buildMenu();
  // The drawing view with the command line below it fills the window; toolbars dock around it.
  docking_.SetManagedWindow(this);
  body_ = new wxPanel(this);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  canvas_ = new DrawingCanvas(body_);
  sizer->Add(canvas_, 1, wxEXPAND);

  history_ = new wxTextCtrl(body_, wxID_ANY, {}, wxDefaultPosition, wxSize(-1, 110),
                            wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP);
  sizer->Add(history_, 0, wxEXPAND);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  prompt_ = new wxStaticText(body_, wxID_ANY, "Command:");
  row->Add(prompt_, 0, wxALIGN_CENTER_VERTICAL | wxLEFT | wxRIGHT, 4);
  keywords_ = new wxPanel(body_);
  keywords_->SetSizer(new wxBoxSizer(wxHORIZONTAL));
  row->Add(keywords_, 0, wxALIGN_CENTER_VERTICAL);
  entry_ = new wxTextCtrl(body_, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
  row->Add(entry_, 1, wxEXPAND | wxALL, 2);
  sizer->Add(row, 0, wxEXPAND);
  body_->SetSizer(sizer);
  docking_.AddPane(body_, wxAuiPaneInfo().Name("drawing").CenterPane());
  docking_.Update();

  CreateStatusBar(2);
  const int widths[] = {-3, -1};
  SetStatusWidths(2, widths);
  SetStatusText("Snap on (F3)", 1);

  entry_->Bind(wxEVT_TEXT_ENTER, &MainFrame::onEnter, this);
  Bind(wxEVT_CHAR_HOOK, &MainFrame::onCharHook, this);
  Bind(wxEVT_CLOSE_WINDOW, &MainFrame::onClose, this);
  canvas_->onPick = [](const double p[3]) {
    std::wstring text = shortest(p[0]) + L"," + shortest(p[1]);
    if (p[2] != 0.0) text += L"," + shortest(p[2]);
    deliverInput({editor::InputKind::Text, text, false});
  };
  canvas_->onCursor = [this](double x, double y) {
    // Survey coordinates to the tenth of a millimetre, with their full size.
    SetStatusText(wxString::Format("%.4f, %.4f", x, y), 0);
  };
  updateTitle();
}

MainFrame::~MainFrame() {
  docking_.UnInit();
  if (gFrame == this) gFrame = nullptr;
}

void MainFrame::buildMenu() {
  auto* file = new wxMenu;
  file->Append(wxID_OPEN, "&Open...\tCtrl+O");
  file->Append(wxID_SAVE, "&Save\tCtrl+S");
  file->Append(wxID_SAVEAS, "Save &As...");
  auto* recentMenu = new wxMenu;
  file->AppendSubMenu(recentMenu, "Recent &Files");
  recent_.UseMenu(recentMenu);
  file->AppendSeparator();
  file->Append(wxID_EXIT, "E&xit");
  auto* edit = new wxMenu;
  edit->Append(wxID_UNDO, "&Undo\tCtrl+Z");
  auto* view = new wxMenu;
  view->Append(kZoomExtents, "Zoom &Extents");
  view->Append(kZoomWindow, "Zoom &Window");
  view->Append(kZoomPrevious, "Zoom &Previous");
  view->AppendSeparator();
  view->AppendCheckItem(kSnap, "Object &Snap\tF3")->Check(true);
  auto* bar = new wxMenuBar;
  bar->Append(file, "&File");
  bar->Append(edit, "&Edit");
  bar->Append(view, "&View");
  SetMenuBar(bar);
  Bind(wxEVT_MENU, &MainFrame::onOpen, this, wxID_OPEN);
  Bind(wxEVT_MENU, &MainFrame::onSave, this, wxID_SAVE);
  Bind(wxEVT_MENU, &MainFrame::onSaveAs, this, wxID_SAVEAS);
  Bind(wxEVT_MENU, &MainFrame::onRecent, this, wxID_FILE1, wxID_FILE9);
  Bind(wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, wxID_EXIT);
  // Undo is the host's U command, typed for the user: the command line shows it as any other command.
  Bind(wxEVT_MENU, [this](wxCommandEvent&) {
    if (!commandRunning()) deliverInput({editor::InputKind::Text, L"_U", false});
  }, wxID_UNDO);
  Bind(wxEVT_MENU, [this](wxCommandEvent&) { canvas_->zoomExtents(); }, kZoomExtents);
  Bind(wxEVT_MENU, [this](wxCommandEvent&) { canvas_->startZoomWindow(); }, kZoomWindow);
  Bind(wxEVT_MENU, [this](wxCommandEvent&) { canvas_->zoomPrevious(); }, kZoomPrevious);
  Bind(wxEVT_MENU, [this](wxCommandEvent& e) {
    if (e.IsChecked() != canvas_->snapOn()) toggleSnap();
  }, kSnap);
}

void MainFrame::updateTitle() {
  const std::string path = host::drawingPath();
  // A star after the name says that the drawing has changes its file does not have yet.
  const wxString changed = drawingHasUnsavedChanges() ? "*" : "";
  SetTitle(path.empty() ? wxString("cadhost") : wxString::FromUTF8(path) + changed + " - cadhost");
}

void MainFrame::showPrompt() {
  const editor::PromptRequest& request = editor::currentPrompt();
  canvas_->setPointPrompt(request.wantsPoint, request.hasBase ? request.base : nullptr);
  if (request.text == shownPrompt_) return;
  shownPrompt_ = request.text;
  std::wstring text = request.text;
  while (!text.empty() && (text.front() == L'\n' || text.front() == L'\r')) text.erase(0, 1);
  prompt_->SetLabel(text);
  keywords_->DestroyChildren();
  for (const std::wstring& word : promptKeywords(request.text)) {
    auto* button = new wxButton(keywords_, wxID_ANY, word, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->Bind(wxEVT_BUTTON, [word](wxCommandEvent&) { deliverInput({editor::InputKind::Text, word, false}); });
    keywords_->GetSizer()->Add(button, 0, wxRIGHT, 2);
  }
  body_->Layout();
}

void MainFrame::refreshDrawing(bool keepView) {
  const dxf::Document* document = host::workingDocument();
  const bool same = keepView && document == shownDocument_;
  shownDocument_ = document;
  canvas_->setScene(document != nullptr ? buildScene(*document) : Scene{}, same);
  updateTitle();
}

void MainFrame::appendHistory(const std::string& utf8) {
  history_->AppendText(wxString::FromUTF8(utf8.data(), utf8.size()));
}

void MainFrame::typeCommand(const wxString& text) {
  // No focus change: focusing the main window would raise it over the dialogs open beside it.
  entry_->ChangeValue(text);
  wxCommandEvent enter(wxEVT_TEXT_ENTER, entry_->GetId());
  enter.SetEventObject(entry_);
  enter.SetString(text);
  entry_->ProcessWindowEvent(enter);
}

void MainFrame::onEnter(wxCommandEvent&) {
  const wxString text = entry_->GetValue();
  entry_->ChangeValue({});
  if (!text.empty()) {
    typed_.push_back(text);
    recall_ = typed_.size();
  }
  deliverInput({text.empty() ? editor::InputKind::Enter : editor::InputKind::Text, text.ToStdWstring(), false});
}

void MainFrame::onCharHook(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == WXK_ESCAPE) {
    deliverInput({editor::InputKind::Escape, {}, false});
    entry_->ChangeValue({});
    return;
  }
  if (key == WXK_F3) {
    toggleSnap();
    return;
  }
  if (FindFocus() == entry_ && (key == WXK_UP || key == WXK_DOWN) && !typed_.empty()) {
    // The command history: up and down recall what was typed before.
    if (key == WXK_UP && recall_ > 0) --recall_;
    if (key == WXK_DOWN && recall_ < typed_.size()) ++recall_;
    entry_->ChangeValue(recall_ < typed_.size() ? typed_[recall_] : wxString());
    entry_->SetInsertionPointEnd();
    return;
  }
  if (FindFocus() == canvas_) {
    // Typing while the mouse works in the view goes to the command line, as in any CAD program.
    const int ch = event.GetUnicodeKey();
    if (key == WXK_RETURN || key == WXK_SPACE) {
      wxCommandEvent enter(wxEVT_TEXT_ENTER, entry_->GetId());
      onEnter(enter);
      return;
    }
    if (ch != WXK_NONE && ch >= 32 && !event.HasAnyModifiers()) {
      entry_->SetFocus();
      const wchar_t typed = static_cast<wchar_t>(ch);
      entry_->AppendText(wxString(event.ShiftDown() ? typed : static_cast<wchar_t>(std::towlower(typed))));
      return;
    }
  }
  event.Skip();
}

void MainFrame::toggleSnap() {
  const bool on = !canvas_->snapOn();
  canvas_->setSnapOn(on);
  GetMenuBar()->Check(kSnap, on);
  SetStatusText(on ? "Snap on (F3)" : "Snap off (F3)", 1);
}

bool MainFrame::commandRunning() {
  if (editor::activeCommand().empty()) return false;
  wxMessageBox("Finish or cancel the running command first (Escape).", "cadhost", wxOK | wxICON_INFORMATION, this);
  return true;
}

void MainFrame::openFile(const std::string& path) {
  std::string error;
  if (!host::headless::switchDrawing(path, error)) {
    wxMessageBox(wxString::FromUTF8(error.empty() ? "cannot open " + path : error), "cadhost", wxOK | wxICON_ERROR,
                 this);
    return;
  }
  drawingFiled();
  recent_.AddFileToHistory(wxString::FromUTF8(path));
  refreshDrawing(false);
}

bool MainFrame::saveTo(const std::string& path) {
  std::string error;
  const bool saved = host::saveDrawing(path, error);
  if (!saved) {
    // Through the backend, so that a script run reads the message in its transcript instead of waiting on it.
    WxBackend::instance().messageBox(host::fromUtf8(error.empty() ? "cannot save " + path : error), L"cadhost",
                                     MB_OK | MB_ICONERROR);
  } else {
    // A copy saved elsewhere leaves the drawing's own file as it was.
    if (path.empty() || path == host::drawingPath()) drawingFiled();
    if (!path.empty()) recent_.AddFileToHistory(wxString::FromUTF8(path));
  }
  updateTitle();
  return saved;
}

bool MainFrame::settleChanges() {
  if (!drawingHasUnsavedChanges()) return true;
  const std::string name = std::filesystem::path(host::drawingPath()).filename().string();
  const std::wstring question = L"Änderungen in " + host::fromUtf8(name) + L" speichern?";
  switch (WxBackend::instance().askYesNoCancel(question, L"cadhost", L"&Ja", L"&Nein", L"Abbrechen")) {
    case IDYES: return saveTo({});
    case IDNO: return true;
    default: return false;
  }
}

bool MainFrame::mayClose() {
  closing_ = false;
  if (!settleChanges()) return false;
  closing_ = true;
  Hide();
  return true;
}

void MainFrame::onOpen(wxCommandEvent&) {
  if (commandRunning() || !settleChanges()) return;
  wxFileDialog dialog(this, "Open drawing", {}, {}, "DXF drawings (*.dxf)|*.dxf;*.DXF|All files|*",
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (dialog.ShowModal() == wxID_OK) openFile(dialog.GetPath().utf8_string());
}

void MainFrame::onSave(wxCommandEvent& event) {
  if (!host::hasDrawing()) return;
  if (host::drawingPath().empty()) {
    onSaveAs(event);
    return;
  }
  saveTo({});
}

void MainFrame::onSaveAs(wxCommandEvent&) {
  if (!host::hasDrawing()) return;
  wxFileDialog dialog(this, "Save drawing as", {}, {}, "DXF drawings (*.dxf)|*.dxf",
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (dialog.ShowModal() == wxID_OK) saveTo(dialog.GetPath().utf8_string());
}

void MainFrame::onRecent(wxCommandEvent& event) {
  if (commandRunning() || !settleChanges()) return;
  openFile(recent_.GetHistoryFile(static_cast<std::size_t>(event.GetId() - wxID_FILE1)).utf8_string());
}

void MainFrame::onClose(wxCloseEvent& event) {
  // The command line ends when the window goes: a running command is cancelled as by Escape first, then, back
  // at the command line, the user says what becomes of the drawing's changes (mayClose) and may stay.
  closing_ = true;
  if (event.CanVeto()) {
    event.Veto();
    return;
  }
  Hide();
}

wxAuiToolBar* MainFrame::showToolbar(const void* key, const ::ui::ToolbarTemplate& template_,
                                     const std::wstring& title, bool visible) {
  Toolbar& entry = toolbars_[key];
  const wxString name = wxString::Format("toolbar%zu", toolbars_.size());
  if (entry.bar == nullptr) {
    entry.bar = new wxAuiToolBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                 wxAUI_TB_DEFAULT_STYLE | wxAUI_TB_TEXT | wxAUI_TB_GRIPPER);
    entry.bar->Bind(wxEVT_TOOL, [](wxCommandEvent& event) {
      try {
        host::ui::pressToolbarButton(event.GetId());
      } catch (const std::exception&) {
        wxBell();
      }
    });
    // A double click on the bar beside its buttons (its gripper) floats a docked bar and docks a floating one
    // where it was docked last, as toolbars of CAD programs do.
    wxAuiToolBar* bar = entry.bar;
    bar->Bind(wxEVT_LEFT_DCLICK, [this, bar](wxMouseEvent& event) {
      event.Skip();
      if (bar->FindToolByPosition(event.GetX(), event.GetY()) != nullptr) return;
      wxAuiPaneInfo& pane = docking_.GetPane(bar);
      if (!pane.IsOk()) return;
      if (pane.IsFloating())
        pane.Dock();
      else
        pane.Float().FloatingPosition(ClientToScreen(wxPoint(GetClientSize().x / 3, GetClientSize().y / 4)));
      CallAfter([this] { docking_.Update(); });
    });
    // A right click on the bar offers the places it can go.
    bar->Bind(wxEVT_RIGHT_UP, [this, bar](wxMouseEvent& event) { placeToolbar(*bar, event.GetPosition()); });
    // Docked at the top below the menu at first; the gripper drags it to another side or out as a floating bar.
    // It cannot be closed: the module decides whether its toolbar shows.
    docking_.AddPane(bar, wxAuiPaneInfo()
                              .Name(name)
                              .ToolbarPane()
                              .Top()
                              .Row(static_cast<int>(toolbars_.size()) - 1)
                              .Gripper()
                              .CloseButton(false)
                              .Floatable()
                              .Dockable()
                              .LeftDockable()
                              .RightDockable()
                              .TopDockable()
                              .BottomDockable());
  }
  wxAuiPaneInfo& pane = docking_.GetPane(entry.bar);
  bool changed = false;
  if (template_.buttons != entry.commands) {
    changed = true;
    entry.commands = template_.buttons;
    entry.bar->ClearTools();
    std::size_t image = 0;
    for (int id : template_.buttons) {
      if (id == 0) {
        entry.bar->AddSeparator();
        continue;
      }
      // A command's string resource is "tooltip\nshort name"; the short name labels the button.
      const std::wstring* text = ::ui::findString(id);
      std::wstring label = text != nullptr ? *text : std::to_wstring(id);
      std::wstring tip = label;
      if (const std::size_t nl = label.find(L'\n'); nl != std::wstring::npos) {
        tip = label.substr(0, nl);
        label = label.substr(nl + 1);
      }
      wxBitmap picture;
      if (image < template_.images.size()) {
        const std::string& png = template_.images[image++];
        wxMemoryInputStream stream(png.data(), png.size());
        wxImage decoded;
        if (decoded.LoadFile(stream, wxBITMAP_TYPE_PNG)) picture = wxBitmap(decoded);
      }
      if (!picture.IsOk()) {
        // Without a picture the button shows its name over a plain square.
        picture = wxBitmap(16, 16);
        wxMemoryDC dc(picture);
        dc.SetBackground(*wxLIGHT_GREY_BRUSH);
        dc.Clear();
      }
      entry.bar->AddTool(id, label, picture, tip);
    }
    entry.bar->Realize();
    pane.BestSize(entry.bar->GetBestSize());
  }
  const wxString caption = title.empty() ? wxString("Toolbar") : wxString(title);
  const bool visibleNow = visible && !template_.buttons.empty();
  if (pane.caption != caption || pane.IsShown() != visibleNow) {
    pane.Caption(caption).Show(visibleNow);
    changed = true;
  }
  if (changed) docking_.Update();
  return entry.bar;
}

void MainFrame::placeToolbar(wxAuiToolBar& bar, const wxPoint& at) {
  enum { kTop = 1, kLeft, kRight, kBottom, kFloat };
  wxMenu places;
  places.Append(kTop, "Dock at the &top");
  places.Append(kLeft, "Dock at the &left");
  places.Append(kRight, "Dock at the &right");
  places.Append(kBottom, "Dock at the &bottom");
  places.AppendSeparator();
  places.Append(kFloat, "&Float");
  const int chosen = bar.GetPopupMenuSelectionFromUser(places, at);
  wxAuiPaneInfo& pane = docking_.GetPane(&bar);
  if (chosen == wxID_NONE || !pane.IsOk()) return;
  if (chosen == kFloat) {
    if (!pane.IsFloating())
      pane.Float().FloatingPosition(ClientToScreen(wxPoint(GetClientSize().x / 3, GetClientSize().y / 4)));
  } else {
    // A bar that moves to another side goes into a row of its own there, outside the bars already docked.
    const int side = chosen == kTop ? wxAUI_DOCK_TOP : chosen == kLeft ? wxAUI_DOCK_LEFT
                   : chosen == kRight ? wxAUI_DOCK_RIGHT : wxAUI_DOCK_BOTTOM;
    if (pane.IsFloating() || pane.dock_direction != side) pane.Dock().Direction(side).Layer(10).Row(0).Position(0);
  }
  CallAfter([this] { docking_.Update(); });
}

void MainFrame::removeToolbar(const void* key) {
  const auto it = toolbars_.find(key);
  if (it == toolbars_.end()) return;
  wxAuiToolBar* bar = it->second.bar;
  toolbars_.erase(it);
  docking_.DetachPane(bar);
  bar->Hide();
  docking_.Update();
  // The bar may be inside its own event handler (a button that unloads the module): it goes later.
  wxWeakRef<wxWindow> ref(bar);
  CallAfter([ref] {
    if (ref) ref->Destroy();
  });
}

wxAuiToolBar* MainFrame::toolbarWith(int command) {
  for (auto& [key, entry] : toolbars_) {
    if (entry.bar != nullptr && docking_.GetPane(entry.bar).IsShown() && entry.bar->FindTool(command) != nullptr)
      return entry.bar;
  }
  return nullptr;
}

}  // namespace host::gui
