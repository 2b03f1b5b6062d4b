#include "host/ui/UiThread.h"

#include <deque>
#include <exception>
#include <future>
#include <mutex>
#include <thread>

namespace host::ui {
namespace {

std::mutex queueMutex;
std::deque<std::packaged_task<void()>> queued;
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
  std::packaged_task<void()> task(call);
  std::future<void> done = task.get_future();
  {
    std::lock_guard lock(queueMutex);
    queued.push_back(std::move(task));
  }
  done.get();
}

void runPendingUiCalls() {
  if (!onUiThread()) return;
  for (;;) {
    std::packaged_task<void()> task;
    {
      std::lock_guard lock(queueMutex);
      if (queued.empty()) return;
      task = std::move(queued.front());
      queued.pop_front();
    }
    task();
  }
}

}  // namespace host::ui
