// Putting a command into the host's command line as if the user had typed it, and cancelling what runs there.
#pragma once

// Queues `text` ("_ViraPtPick\n") as typed input of the current drawing, hands the keyboard to the host's
// main frame and nudges the drawing view so that the host reads the input at once. Beeps (1000 Hz, 100 ms)
// and answers false when the host cannot take it.
bool SendCommandToHost(const wchar_t* text);

// Types Escape twice into the host's command line: the first ends a running prompt, the second the command
// that asked for it (or a second prompt level). Always true.
bool CancelHostCommand();
