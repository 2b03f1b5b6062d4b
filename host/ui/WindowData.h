// The state behind a window object. The framework keeps every window's state itself (text, check, selection,
// list rows); a backend mirrors it on screen (or, headless, nothing) and feeds the user's actions back through
// UserActions.h. This is what lets one module run on both backends.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sdk/ui/CWnd.h"

namespace ui::detail {

struct ChildSlot {
  CWnd* window = nullptr;
  std::unique_ptr<CWnd> owned;  // set for the framework's own control objects, not for subclassing ones
};

struct Column {
  std::wstring text;
  int format = LVCFMT_LEFT;
  int width = 0;
};

struct WindowData {
  CWnd* self = nullptr;
  bool created = false;
  bool destroying = false;
  ControlKind kind = ControlKind::Static;
  int id = 0;
  std::wstring text;
  unsigned style = 0;
  CRect rect;  // pixels, in the parent's client coordinates
  bool enabled = true;
  bool visible = true;
  CWnd* parent = nullptr;
  std::vector<ChildSlot> children;
  int redrawSuppressed = 0;

  int check = BST_UNCHECKED;                   // check box
  int selStart = 0, selEnd = 0, limit = 0;     // edit
  int lower = 100, upper = 0, pos = 0;         // up-down
  CWnd* buddy = nullptr;
  int itemCount = 0;                           // list (virtual)
  std::vector<unsigned> itemStates;
  std::vector<std::vector<std::wstring>> itemTexts;  // list (non-virtual): row, column
  unsigned extendedStyle = 0;
  std::vector<Column> columns;                 // header
  int sortColumn = -1, sortMark = 0;
  int templateId = 0;                          // dialog
  bool modal = false, modalRunning = false;
  int modalResult = 0, defaultId = IDOK;
  std::vector<std::wstring> choices;           // combo box
  int chosen = -1;
  std::vector<int> buttons;                    // toolbar
  ToolbarTemplate toolbar;                     // toolbar: the resource it was loaded from (id 0: none yet)
  CWnd* owner = nullptr;
  COLORREF textColour = 0;                     // label
  bool underline = false;
  HCURSOR hoverCursor = nullptr;
};

struct WindowAccess {
  static WindowData& data(const CWnd& window) { return *window.data_; }
  static std::unique_ptr<WindowData>& dataSlot(CWnd& window) { return window.data_; }
};

inline WindowData& dataOf(const CWnd& window) { return WindowAccess::data(window); }

void registerObject(const CWnd* window);
void unregisterObject(const CWnd* window);
bool isLiveHandle(HWND hwnd);
// The window with the keyboard focus; forgetFocus clears it when it is `window` or inside it.
CWnd*& focusedWindow();
void forgetFocus(CWnd& window);

// True while the object at `window` exists (it may delete itself in a handler).
bool isAlive(const CWnd* window);

// Makes `window` a created window of `kind` under `parent` (registered as its child).
void createWindow(CWnd& window, ControlKind kind, int id, const std::wstring& text, unsigned style,
                  const CRect& rect, CWnd* parent, std::unique_ptr<CWnd> owned = nullptr);
// Creates the framework's own control object for a template control.
CWnd& createTemplateControl(CWnd& dialog, const ControlTemplate& control);
// Destroys the window and its children, calls OnDestroy and PostNcDestroy. False when there is no window.
bool destroyWindow(CWnd& window);

// Command and notification routing: first to the control itself, then to its parent.
void sendCommand(CWnd& control, int code);
long sendNotify(CWnd& control, UiNotify& notify);

// Top-level windows the user can reach: dialogs (in the order they were opened) and toolbars.
std::vector<CWnd*> openDialogs();
std::vector<CWnd*> liveToolbars();

// The dialog (or other top-level window) that holds `window`.
CWnd* topLevelOf(CWnd& window);
// Children in tab order, depth first, each with its own children following it.
void collectDescendants(const CWnd& window, std::vector<CWnd*>& out);

// The control that Tab (or Shift+Tab) moves to from `current` (null: from the start); null when none takes focus.
CWnd* nextTabControl(CWnd& dialog, CWnd* current, bool backwards);

}  // namespace ui::detail
