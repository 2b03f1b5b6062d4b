// Keys as the dialog framework knows them (virtual-key codes), from the toolkit's key events.
#pragma once

class wxKeyEvent;

namespace host::gui {

struct FrameworkKey {
  unsigned code = 0;       // 0: a key the framework has no code for
  unsigned modifiers = 0;  // MK_SHIFT, MK_CONTROL
  wchar_t ch = 0;          // the character the key types, 0 for none
};

FrameworkKey frameworkKey(const wxKeyEvent& event);

}  // namespace host::gui
