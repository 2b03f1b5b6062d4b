// Dialogs and message boxes belong to the UI thread. A worker thread that asks for one (the update check shows
// its own modal dialog) has the call run on the UI thread and waits until it is over, so the dialog stays modal
// for the worker as the module expects.
//
// The state behind these calls is never destroyed: a worker may still wait on a call, or still run, while the
// process ends, and the end of the process must neither wait for it nor pull its state away.
#pragma once

#include <chrono>
#include <functional>

namespace host::ui {

// The calling thread becomes the UI thread (by default: the thread that loaded the host library).
void setUiThread();
bool onUiThread();
// Runs `call` on the UI thread: at once when called there, otherwise queued and waited for. An exception of a
// queued call is passed on to the UI thread (it stops the script run); the worker then returns as if the call
// had not been made, so callers give their outputs a safe default beforehand.
void runOnUiThread(const std::function<void()>& call);
// Runs the calls queued by other threads; the UI thread calls this while it waits for the user.
void runPendingUiCalls();
bool uiCallsPending();

// Worker threads started through AfxBeginThread that have not ended yet.
int runningWorkerThreads();
// Waits until a worker queues a call or a worker ends, or `limit` has passed.
void waitForWorkerActivity(std::chrono::milliseconds limit);

// Called by the worker thread starter.
void workerStarted();
void workerEnded();

}  // namespace host::ui
