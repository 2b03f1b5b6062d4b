// Waiting for the user without leaving the toolkit: the module runs on the UI thread and asks for a point in
// the middle of its command, so the host runs the window's events in a nested loop until the answer is there.
// Dialogs that stay open meanwhile (the capture list) keep working, and calls that worker threads queue for the
// UI thread run too.
#pragma once

#include <functional>

namespace host::gui {

// Runs the toolkit's events until `done` answers true.
void runEventsUntil(const std::function<bool()>& done);

// Runs the events that are due now and then for `milliseconds` more, so that a script sees the window drawn
// after what it did.
void settleEvents(int milliseconds);

}  // namespace host::gui
