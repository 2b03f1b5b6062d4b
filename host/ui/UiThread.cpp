#include "host/ui/UiThread.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace host::ui {
namespace {

struct Call {
  std::function<void()> run;
  bool finished = false;
};

std::mutex queueMutex;
std::condition_variable callFinished;
// Never destroyed: a worker may still wait on its call while the process ends.
auto* queued = new std::deque<std::shared_ptr<Call>>();
// Set while the library is loaded, which happens on the thread that starts the host.
std::thread::id uiThread = std::this_thread::get_id();
std::mutex threadMutex;

}  // namespace

void setUiThread() {
  std::lock_guard lock(threadMutex);
  uiThread = std::this_thread::get_id();
}

bool onUiThread() {
  std::lock_guard lock(threadMutex);
  return uiThread == std::this_thread::get_id();
}

void runOnUiThread(const std::function<void()>& call) {
  if (onUiThread()) {
    call();
    return;
  }
  auto pending = std::make_shared<Call>();
  pending->run = call;
  std::unique_lock lock(queueMutex);
  queued->push_back(pending);
  callFinished.wait(lock, [&] { return pending->finished; });
}

void runPendingUiCalls() {
  if (!onUiThread()) return;
  for (;;) {
    std::shared_ptr<Call> call;
    {
      std::lock_guard lock(queueMutex);
      if (queued->empty()) return;
      call = queued->front();
      queued->pop_front();
    }
    // The worker goes on in any case; a failure (the script cannot answer the dialog) belongs to the UI
    // thread, whose run it stops, while the worker sees the call as not carried out.
    struct Release {
      Call& call;
      ~Release() {
        {
          std::lock_guard lock(queueMutex);
          call.finished = true;
        }
        callFinished.notify_all();
      }
    } release{*call};
    call->run();
  }
}

}  // namespace host::ui
