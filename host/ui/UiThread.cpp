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

struct Shared {
  std::mutex mutex;
  std::condition_variable callFinished;
  // Signalled when a call is queued or a worker ends: what a waiting script looks for.
  std::condition_variable activity;
  std::deque<std::shared_ptr<Call>> queued;
  int workers = 0;
};

// Never destroyed: a worker may still wait on its call while the process ends, and destroying a condition
// variable that a thread waits on blocks the exit.
Shared& shared() {
  static Shared* state = new Shared();
  return *state;
}

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
  Shared& s = shared();
  std::unique_lock lock(s.mutex);
  s.queued.push_back(pending);
  s.activity.notify_all();
  s.callFinished.wait(lock, [&] { return pending->finished; });
}

void runPendingUiCalls() {
  if (!onUiThread()) return;
  Shared& s = shared();
  for (;;) {
    std::shared_ptr<Call> call;
    {
      std::lock_guard lock(s.mutex);
      if (s.queued.empty()) return;
      call = s.queued.front();
      s.queued.pop_front();
    }
    // The worker goes on in any case; a failure (the script cannot answer the dialog) belongs to the UI
    // thread, whose run it stops, while the worker sees the call as not carried out.
    struct Release {
      Shared& s;
      Call& call;
      ~Release() {
        {
          std::lock_guard lock(s.mutex);
          call.finished = true;
        }
        s.callFinished.notify_all();
      }
    } release{s, *call};
    call->run();
  }
}

bool uiCallsPending() {
  Shared& s = shared();
  std::lock_guard lock(s.mutex);
  return !s.queued.empty();
}

int runningWorkerThreads() {
  Shared& s = shared();
  std::lock_guard lock(s.mutex);
  return s.workers;
}

void waitForWorkerActivity(std::chrono::milliseconds limit) {
  Shared& s = shared();
  std::unique_lock lock(s.mutex);
  const int workers = s.workers;
  s.activity.wait_for(lock, limit, [&] { return !s.queued.empty() || s.workers < workers; });
}

void workerStarted() {
  Shared& s = shared();
  std::lock_guard lock(s.mutex);
  ++s.workers;
}

void workerEnded() {
  Shared& s = shared();
  {
    std::lock_guard lock(s.mutex);
    --s.workers;
  }
  s.activity.notify_all();
}

}  // namespace host::ui
