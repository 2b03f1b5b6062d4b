#include "host/gui/WidgetKeys.h"

#include "sdk/ui/UiTypes.h"

#include <wx/event.h>

#include <cwctype>

namespace host::gui {

FrameworkKey frameworkKey(const wxKeyEvent& event) {
  FrameworkKey key;
  if (event.ShiftDown()) key.modifiers |= MK_SHIFT;
  if (event.ControlDown()) key.modifiers |= MK_CONTROL;
  const int code = event.GetKeyCode();
  static const struct {
    int wx;
    unsigned vk;
  } named[] = {{WXK_DELETE, VK_DELETE}, {WXK_TAB, VK_TAB},     {WXK_RETURN, VK_RETURN},  {WXK_NUMPAD_ENTER, VK_RETURN},
               {WXK_ESCAPE, VK_ESCAPE}, {WXK_BACK, VK_BACK},   {WXK_SPACE, VK_SPACE},    {WXK_UP, VK_UP},
               {WXK_DOWN, VK_DOWN},     {WXK_LEFT, VK_LEFT},   {WXK_RIGHT, VK_RIGHT},    {WXK_PAGEUP, VK_PRIOR},
               {WXK_PAGEDOWN, VK_NEXT}, {WXK_HOME, VK_HOME},   {WXK_END, VK_END}};
  for (const auto& n : named) {
    if (n.wx == code) {
      key.code = n.vk;
      if (n.vk == VK_SPACE) key.ch = L' ';
      return key;
    }
  }
  if (code >= WXK_F1 && code <= WXK_F12) {
    key.code = VK_F1 + static_cast<unsigned>(code - WXK_F1);
    return key;
  }
  const int ch = event.GetUnicodeKey();
  if (ch != WXK_NONE && ch > 32) {
    const wchar_t c = static_cast<wchar_t>(ch);
    if (c < 0x80 && std::iswalnum(c)) key.code = static_cast<unsigned>(std::towupper(c));
    if ((key.modifiers & MK_CONTROL) == 0) key.ch = event.ShiftDown() ? c : static_cast<wchar_t>(std::towlower(c));
  }
  return key;
}

}  // namespace host::gui
