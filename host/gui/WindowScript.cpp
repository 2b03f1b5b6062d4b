#include "host/gui/WindowScript.h"

#include "host/WideText.h"
#include "host/editor/InputParsing.h"
#include "host/gui/EventLoop.h"
#include "host/gui/MainFrame.h"
#include "host/gui/Screenshot.h"
#include "host/gui/WxBackend.h"
#include "host/headless/ScriptInput.h"
#include "host/headless/UiScript.h"
#include "host/ui/UserActions.h"
#include "host/ui/WindowData.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/textctrl.h>
#include <wx/aui/auibar.h>
#include <wx/uiaction.h>

#include <sstream>
#include <vector>

namespace host::gui {
namespace {

using host::headless::ScriptError;
using host::headless::ScriptLine;
using host::headless::ScriptLineKind;

// Time the window gets after each line to carry out and draw what the line did.
constexpr int kSettleMs = 30;

std::vector<std::string> words(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> out;
  for (std::string w; in >> w;) out.push_back(w);
  return out;
}

void reportFailure() {
  const std::string failure = WxBackend::instance().takeFailure();
  if (!failure.empty()) throw ScriptError(failure);
}

void settle() {
  settleEvents(kSettleMs);
  reportFailure();
}

void sendEvent(wxWindow& widget, wxEvent& event) {
  event.SetEventObject(&widget);
  widget.ProcessWindowEvent(event);
}

// "@dialog ID set|click|check CTRL ..." through the widgets; every other dialog line, and any line whose widget
// the user could not use (where the framework names the reason), goes the framework's way.
bool dialogThroughWidgets(const std::string& line) {
  const std::vector<std::string> w = words(line);
  if (w.size() < 4 || w[0] != "@dialog") return false;
  const std::string& verb = w[2];
  if (verb != "set" && verb != "click" && verb != "check") return false;
  CWnd* control = nullptr;
  try {
    control = &host::ui::findControl(host::ui::findOpenDialog(std::stoi(w[1])), std::stoi(w[3]));
  } catch (const std::exception&) {
    return false;
  }
  wxWindow* widget = WxBackend::instance().widgetOf(*control);
  if (widget == nullptr || !widget->IsShownOnScreen() || !widget->IsEnabled()) return false;
  if (verb == "set") {
    auto* edit = dynamic_cast<wxTextCtrl*>(widget);
    if (edit == nullptr || !edit->IsEditable()) return false;
    // The rest of the line from its fifth word on, blanks inside and at the end kept, as headless reads it.
    std::size_t at = 0;
    for (int word = 0; word < 4; ++word) {
      at = line.find_first_not_of(" \t", at);
      at = line.find_first_of(" \t", at);
    }
    at = at == std::string::npos ? line.size() : line.find_first_not_of(" \t", at);
    std::string text = at == std::string::npos ? std::string() : line.substr(at);
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    edit->SetFocus();
    edit->SetValue(wxString::FromUTF8(text));
    return true;
  }
  if (auto* box = dynamic_cast<wxCheckBox*>(widget)) {
    if (verb == "check") {
      if (w.size() < 5 || (w[4] != "0" && w[4] != "1")) return false;
      if (box->GetValue() == (w[4] == "1")) return true;
    }
    box->SetValue(!box->GetValue());
    wxCommandEvent click(wxEVT_CHECKBOX, box->GetId());
    click.SetInt(box->GetValue() ? 1 : 0);
    sendEvent(*box, click);
    return true;
  }
  if (auto* button = dynamic_cast<wxButton*>(widget); button != nullptr && verb == "click") {
    wxCommandEvent click(wxEVT_BUTTON, button->GetId());
    sendEvent(*button, click);
    return true;
  }
  return false;
}

// "@toolbar CMD" as a click on the button of the window's toolbar, when it has one with that command.
bool toolbarThroughWidgets(const std::string& line) {
  const std::vector<std::string> w = words(line);
  if (w.size() != 2 || w[0] != "@toolbar" || w[1].find_first_not_of("0123456789") != std::string::npos ||
      w[1].size() > 9)
    return false;
  const int id = std::stoi(w[1]);
  wxAuiToolBar* bar = mainFrame()->toolbarWith(id);
  if (bar == nullptr || !bar->IsShownOnScreen()) return false;
  wxCommandEvent click(wxEVT_TOOL, id);
  sendEvent(*bar, click);
  return true;
}

void uiLine(const std::string& line) {
  if (dialogThroughWidgets(line) || toolbarThroughWidgets(line)) {
    settle();
    return;
  }
  std::string error;
  if (!host::headless::runUiScriptLine(line, error)) throw ScriptError(error);
  settle();
}

void pick(const std::string& coordinates) {
  double p[3] = {0, 0, 0};
  if (!host::editor::parsePoint(host::fromUtf8(coordinates), p))
    throw ScriptError("@pick needs a point X,Y or X,Y,Z: \"" + coordinates + "\"");
  DrawingCanvas& canvas = mainFrame()->canvas();
  const wxPoint at = canvas.revealWorld(p[0], p[1]);
  settle();
  for (wxEventType type : {wxEVT_MOTION, wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
    wxMouseEvent mouse(type);
    mouse.SetPosition(at);
    if (type != wxEVT_MOTION) mouse.SetLeftDown(type == wxEVT_LEFT_DOWN);
    sendEvent(canvas, mouse);
  }
  settle();
}

void typeKeys(const std::string& keys) {
  static const struct {
    const char* name;
    int key;
  } named[] = {{"Return", WXK_RETURN}, {"Enter", WXK_RETURN},     {"Escape", WXK_ESCAPE}, {"Esc", WXK_ESCAPE},
               {"Tab", WXK_TAB},       {"Delete", WXK_DELETE},    {"Backspace", WXK_BACK}, {"Space", WXK_SPACE},
               {"Up", WXK_UP},         {"Down", WXK_DOWN},        {"Left", WXK_LEFT},     {"Right", WXK_RIGHT}};
  wxUIActionSimulator keyboard;
  for (const std::string& word : words(keys)) {
    int key = 0;
    for (const auto& n : named)
      if (word == n.name) key = n.key;
    if (word.size() >= 2 && word[0] == 'F' && word.find_first_not_of("0123456789", 1) == std::string::npos) {
      const int n = std::stoi(word.substr(1));
      if (n >= 1 && n <= 12) key = WXK_F1 + n - 1;
    }
    if (key != 0)
      keyboard.Char(key);
    else
      keyboard.Text(word.c_str());
    settle();
  }
}

// A window line: true when it was carried out (the answer, if any, waits among the delivered inputs).
void windowLine(const std::string& line) {
  const std::size_t blank = line.find(' ');
  const std::string verb = line.substr(0, blank);
  std::string rest = blank == std::string::npos ? std::string() : line.substr(blank + 1);
  rest.erase(0, rest.find_first_not_of(" \t"));
  if (verb == "@pick") {
    pick(rest);
  } else if (verb == "@close") {
    // As the window's close button: the window asks about unsaved changes at the command line.
    mainFrame()->Close();
  } else if (verb == "@screenshot") {
    if (rest.empty()) throw ScriptError("@screenshot needs the path of the picture");
    settleEvents(200);
    std::string error;
    if (!saveScreenshot(rest, error)) throw ScriptError(error);
  } else {
    if (rest.empty()) throw ScriptError("@key needs the keys to type");
    typeKeys(rest);
  }
}

editor::Input delivered() {
  if (hasDeliveredInput()) return takeDeliveredInput();
  return {editor::InputKind::None, {}, false};
}

}  // namespace

editor::Input scriptedInput() {
  settle();
  if (hasDeliveredInput()) return takeDeliveredInput();
  const ScriptLine line = host::headless::pullScriptLine();
  MainFrame& frame = *mainFrame();
  switch (line.kind) {
    case ScriptLineKind::End: return {editor::InputKind::End, {}, false};
    case ScriptLineKind::Text: frame.typeCommand(wxString::FromUTF8(line.text)); break;
    case ScriptLineKind::Enter: frame.typeCommand({}); break;
    case ScriptLineKind::Escape: {
      wxKeyEvent escape(wxEVT_CHAR_HOOK);
      escape.m_keyCode = WXK_ESCAPE;
      sendEvent(frame, escape);
      break;
    }
    case ScriptLineKind::Ui: uiLine(line.text); break;
    case ScriptLineKind::Window: windowLine(line.text); break;
  }
  settle();
  return delivered();
}

bool scriptedModalStep() {
  settle();
  const ScriptLine line = host::headless::pullScriptLine();
  const std::vector<CWnd*> dialogs = ::ui::detail::openDialogs();
  CWnd* dialog = dialogs.empty() ? nullptr : dialogs.back();
  switch (line.kind) {
    case ScriptLineKind::End: return false;
    case ScriptLineKind::Text:
      throw ScriptError("dialog " + std::to_string(dialog != nullptr ? ::ui::detail::dataOf(*dialog).templateId : 0) +
                        " is open; \"" + line.text + "\" cannot be typed at the command line now");
    case ScriptLineKind::Escape:
    case ScriptLineKind::Enter:
      if (dialog != nullptr) {
        // The key goes to the dialog's widget as a person's key would.
        if (wxWindow* widget = WxBackend::instance().widgetOf(*dialog)) {
          wxKeyEvent key(wxEVT_CHAR_HOOK);
          key.m_keyCode = line.kind == ScriptLineKind::Escape ? WXK_ESCAPE : WXK_RETURN;
          sendEvent(*widget, key);
        }
      }
      break;
    case ScriptLineKind::Ui: uiLine(line.text); break;
    case ScriptLineKind::Window: windowLine(line.text); break;
  }
  settle();
  return true;
}

}  // namespace host::gui
