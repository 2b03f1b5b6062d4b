#include "host/gui/EventLoop.h"

#include "host/ui/UiThread.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/time.h>

namespace host::gui {
namespace {

// One round: queued calls of other threads, pending toolkit events, then whatever the system has.
void runOnce(wxGUIEventLoop& loop, int waitMs) {
  host::ui::runPendingUiCalls();
  if (wxTheApp != nullptr) wxTheApp->ProcessPendingEvents();
  if (loop.Pending()) {
    loop.Dispatch();
    return;
  }
  if (loop.ProcessIdle()) return;
  loop.DispatchTimeout(static_cast<unsigned long>(waitMs));
}

}  // namespace

void runEventsUntil(const std::function<bool()>& done) {
  wxGUIEventLoop loop;
  wxEventLoopActivator active(&loop);
  while (!done()) runOnce(loop, 20);
}

void settleEvents(int milliseconds) {
  wxGUIEventLoop loop;
  wxEventLoopActivator active(&loop);
  const wxLongLong until = wxGetLocalTimeMillis() + milliseconds;
  // Everything due now, however long it takes, then the quiet time.
  for (int i = 0; i < 1000 && (loop.Pending() || (wxTheApp != nullptr && wxTheApp->HasPendingEvents())); ++i)
    runOnce(loop, 0);
  while (wxGetLocalTimeMillis() < until) runOnce(loop, 5);
}

}  // namespace host::gui
