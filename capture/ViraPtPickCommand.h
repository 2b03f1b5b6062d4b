// The point capture command: click points in the drawing, each gets the next running name in the capture
// dialog's list, until the prompt is answered with anything but a point.
#pragma once

void ViraPtPickCommand();
