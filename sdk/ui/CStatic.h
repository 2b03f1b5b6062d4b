// Labels, group boxes and etched lines. A label with SS_NOTIFY reports clicks (STN_CLICKED) and can look like a
// link: its own text colour, underlined text, and a cursor of its own while the mouse is over it.
#pragma once

#include "sdk/ui/CWnd.h"

class CStatic : public CWnd {
 public:
  void SetTextColor(COLORREF colour);
  COLORREF GetTextColor() const;
  void SetUnderline(bool underline);
  bool IsUnderlined() const;
  // Null: the backend's usual arrow.
  void SetHoverCursor(HCURSOR cursor);
  HCURSOR GetHoverCursor() const;
};
