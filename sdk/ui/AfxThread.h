// Worker threads of a module. The host starts them and knows which still run, so that a script can wait
// until a module's background work (the update check) is over. A worker never touches a window itself:
// dialogs and message boxes it asks for run on the UI thread while it waits (see CDialog::DoModal).
#pragma once

#include <functional>

using AFX_THREADPROC = unsigned (*)(void* parameter);

// Starts `procedure(parameter)` on a new thread that nobody waits for; the host neither joins it at exit
// nor holds its exit up. False when the system cannot start a thread.
bool AfxBeginThread(AFX_THREADPROC procedure, void* parameter);

// Runs `call` on the UI thread and waits for it: the way a worker shows a dialog of its own. On the UI thread
// it runs at once.
void AfxRunOnUiThread(const std::function<void()>& call);
