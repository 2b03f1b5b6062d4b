// From picked drawing points and typed target coordinates to one 4x4 matrix for the whole drawing, with
// the preview text the surveyor reads before confirming. The number of pairs chooses the method: one pair
// shifts, two pairs shift, turn about the vertical axis and optionally scale (2½D), three pairs give a
// spatial similarity transformation.
#pragma once

#include "sdk/AcGeMatrix3d.h"

#include <string>

class KoPointList;

struct DrawingTrafoSolution {
  // Identity unless a solution was found.
  AcGeMatrix3d matrix;
  // Whether the dialog's preview and OK button take the two fields below; false for more pairs than any
  // method takes, where the dialog keeps what it showed.
  bool updatesDialog = true;
  std::wstring preview;
  bool okEnabled = false;
};

// Point i of `actual` pairs with point i of `target`; both lists are renumbered 1, 2, 3, ... and, for
// three pairs, get a fourth point each (the mean of their first and third). `scale` is the state of the
// dialog's scale box.
DrawingTrafoSolution SolveDrawingTrafo(KoPointList& actual, KoPointList& target, bool scale);

// One pass of the message formatter over a text that is its own format: %% . ! blank give the character,
// %n a line break, %0 ends the text; everything else stands as written.
std::wstring FormatMessageText(const std::wstring& text);
