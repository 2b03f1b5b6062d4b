// AfxBeginThread: a module's worker threads, counted so that a script can wait for them to end.
#include "sdk/ui/AfxThread.h"

#include <system_error>
#include <thread>

#include "host/ui/UiThread.h"

bool AfxBeginThread(AFX_THREADPROC procedure, void* parameter) {
  if (procedure == nullptr) return false;
  host::ui::workerStarted();
  try {
    // Detached: the host's exit does not wait for a worker that still talks to a slow server.
    std::thread([procedure, parameter] {
      struct Count {
        ~Count() { host::ui::workerEnded(); }
      } count;
      procedure(parameter);
    }).detach();
  } catch (const std::system_error&) {
    host::ui::workerEnded();
    return false;
  }
  return true;
}

void AfxRunOnUiThread(const std::function<void()>& call) { host::ui::runOnUiThread(call); }
