#include "host/gui/WindowSession.h"

#include "host/Transcript.h"
#include "host/editor/CommandLine.h"
#include "host/editor/Input.h"
#include "host/editor/Prompt.h"
#include "host/gui/DrawingChanges.h"
#include "host/gui/EventLoop.h"
#include "host/gui/MainFrame.h"
#include "host/gui/WindowScript.h"
#include "host/gui/WxBackend.h"
#include "host/headless/ScriptInput.h"
#include "host/headless/ScriptRunner.h"

#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>

#include <cstdio>
#include <cstdlib>

namespace host::gui {
namespace {

// The toolkit's application object; the host's command line is the program's real main loop.
class CadApp : public wxApp {
 public:
  bool OnInit() override { return true; }  // cadhost reads its own command line
};

bool gStarted = false;
bool gInputSinceRefresh = true;

bool atCommandPrompt() { return editor::activeCommand().empty(); }

// The window's side of the editor's input: the prompt is shown, then the user's answer awaited.
editor::Input windowInput() {
  MainFrame& frame = *mainFrame();
  noteDrawingChanges();
  // A command may have changed the drawing; back at the command line the view shows it as it is now.
  if (atCommandPrompt() && gInputSinceRefresh) {
    frame.refreshDrawing(true);
    gInputSinceRefresh = false;
  }
  frame.showPrompt();
  const bool scripted = host::headless::ScriptRunner::active() != nullptr;
  editor::Input in{editor::InputKind::None, {}, false};
  for (;;) {
    if (frame.closing()) {
      // The window goes: a running command is cancelled first; at the command line the user may still stay.
      if (!atCommandPrompt() || frame.mayClose()) {
        in = {editor::InputKind::End, {}, false};
        break;
      }
      frame.showPrompt();
    }
    if (scripted) {
      in = scriptedInput();
      if (frame.closing()) continue;
      break;
    }
    runEventsUntil([&] { return hasDeliveredInput() || editor::hasQueuedInput() || frame.closing(); });
    if (frame.closing()) continue;
    if (hasDeliveredInput()) in = takeDeliveredInput();
    break;
  }
  gInputSinceRefresh = true;
  return in;
}

}  // namespace

bool startWindow(std::string& error) {
  static char name[] = "cadhost";
  static char* argv[] = {name, nullptr};
  int argc = 1;
  wxApp::SetInstance(new CadApp);
  if (!wxEntryStart(argc, argv) || wxTheApp == nullptr || !wxTheApp->CallOnInit()) {
    const char* display = std::getenv("DISPLAY");
    error = std::string("cannot open the display ") + (display != nullptr ? display : "") +
            "; run with --headless to work without a window";
    return false;
  }
  gStarted = true;
  wxInitAllImageHandlers();
  auto* frame = new MainFrame;
  host::ui::setBackend(&WxBackend::instance());
  WxBackend::instance().scriptStep = scriptedModalStep;
  host::headless::setDrawingFiledHandler(drawingFiled);
  frame->Show();
  frame->refreshDrawing(false);
  settleEvents(50);
  return true;
}

bool runWindow(std::istream* script, const std::string& scriptName, std::string& error) {
  // The transcript goes to standard output as in a headless run, and to the window's command-line history.
  const TranscriptSink previous = setTranscriptSink([](std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
    if (MainFrame* frame = mainFrame()) frame->appendHistory(std::string(text));
  });
  editor::setInputSource(windowInput);
  bool ok = true;
  if (script != nullptr) {
    host::headless::ScriptRunner runner(*script, scriptName);
    ok = runner.run(error);
  } else {
    try {
      editor::runCommandLine();
    } catch (const std::exception& e) {
      error = std::string("unexpected failure: ") + e.what();
      ok = false;
    }
  }
  editor::setInputSource(nullptr);
  setTranscriptSink(previous);
  return ok;
}

void stopWindow() {
  if (!gStarted) return;
  host::headless::setDrawingFiledHandler(nullptr);
  host::ui::setBackend(nullptr);
  if (MainFrame* frame = mainFrame()) frame->Destroy();
  settleEvents(0);
  wxEntryCleanup();
  gStarted = false;
}

}  // namespace host::gui
