#include "sdk/ui/CStatic.h"

#include "host/ui/WindowData.h"

using ui::detail::dataOf;

void CStatic::SetTextColor(COLORREF colour) {
  dataOf(*this).textColour = colour;
  Invalidate();
}

COLORREF CStatic::GetTextColor() const { return dataOf(*this).textColour; }

void CStatic::SetUnderline(bool underline) {
  dataOf(*this).underline = underline;
  Invalidate();
}

bool CStatic::IsUnderlined() const { return dataOf(*this).underline; }

void CStatic::SetHoverCursor(HCURSOR cursor) { dataOf(*this).hoverCursor = cursor; }

HCURSOR CStatic::GetHoverCursor() const { return dataOf(*this).hoverCursor; }
