// Resources of the dialog framework: dialog templates, strings, menus, toolbars and a version record, bundled in
// one resource module. A module hands its own (German) resource module over at load time; a language library
// brings a replacement. Lookups go to the current resource module first and then to every registered one in
// the order of registration, so a language library that lacks an item falls back to the module's own.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sdk/ui/UiTypes.h"

namespace ui {

enum class ControlKind {
  Static,    // label; with SS_ETCHEDHORZ an etched line
  Edit,      // single-line edit
  Button,    // push button; BS_DEFPUSHBUTTON marks the default button
  CheckBox,  // toggles itself when clicked unless its style is BS_CHECKBOX
  GroupBox,
  UpDown,    // up-down (spin) control
  ListView,  // report-style list view
  ComboBox,  // drop-down list
  // Windows that are not made from dialog templates.
  Dialog,
  Header,
  ToolBar,
  Frame,
};

struct ControlTemplate {
  ControlTemplate() = default;
  ControlTemplate(int controlId, ControlKind controlKind, std::wstring controlText, unsigned controlStyle = 0,
                  CRect dialogUnits = {})
      : id(controlId), kind(controlKind), text(std::move(controlText)), style(controlStyle), rect(dialogUnits) {}

  int id = IDC_STATIC;
  ControlKind kind = ControlKind::Static;
  std::wstring text;
  unsigned style = 0;  // control style bits; WS_DISABLED starts it disabled
  CRect rect;          // dialog units
};

struct DialogTemplate {
  int id = 0;
  std::wstring title;
  std::wstring fontName = L"MS Sans Serif";
  int fontSize = 8;
  CRect rect;  // dialog units
  std::vector<ControlTemplate> controls;  // in tab order
};

struct MenuItem {
  MenuItem() = default;
  MenuItem(int itemId, std::wstring itemText, unsigned itemFlags = MF_STRING, std::vector<MenuItem> items = {})
      : id(itemId), text(std::move(itemText)), flags(itemFlags), popup(std::move(items)) {}

  int id = 0;  // 0 with an empty text: separator; items with a popup have no id of their own
  std::wstring text;
  unsigned flags = MF_STRING;
  std::vector<MenuItem> popup;
};

struct MenuTemplate {
  int id = 0;
  std::vector<MenuItem> items;
};

struct ToolbarTemplate {
  ToolbarTemplate() = default;
  ToolbarTemplate(int toolbarId, std::vector<int> commandIds, std::vector<std::string> buttonImages = {},
                  int buttonImageSize = 0)
      : id(toolbarId), buttons(std::move(commandIds)), images(std::move(buttonImages)), imageSize(buttonImageSize) {}

  int id = 0;
  std::vector<int> buttons;  // command ids in button order; 0 is a separator
  // One image per button that is not a separator, in button order: the bytes of a PNG file, each
  // imageSize pixels (square buttons, 16 or 24 pixels; transparent where the bar shows through).
  std::vector<std::string> images;
  int imageSize = 0;
};

// The cursors a module's resources can name; a backend shows its own picture of each.
enum class CursorShape { Arrow, Hand };

struct ResourceModule {
  std::wstring name;  // for messages, e.g. the library file
  std::map<int, DialogTemplate> dialogs;
  std::map<int, std::wstring> strings;
  std::map<int, MenuTemplate> menus;
  std::map<int, ToolbarTemplate> toolbars;
  // Version record: string values such as L"FileVersion", L"ProductName".
  std::map<std::wstring, std::wstring> version;
  std::map<int, CursorShape> cursors;
};

using ResourceHandle = const ResourceModule*;

// Registers a resource module for lookups (kept until unregistered; the module must outlive its registration).
// The first registered module becomes the current one when none is current.
void registerResourceModule(ResourceHandle module);
void unregisterResourceModule(ResourceHandle module);

const DialogTemplate* findDialogTemplate(int id);
const MenuTemplate* findMenuTemplate(int id);
const ToolbarTemplate* findToolbarTemplate(int id);
// Null when no module has the string.
const std::wstring* findString(int id);
const CursorShape* findCursor(int id);

// A language library is a shared library exporting `extern "C" const ui::ResourceModule* UiResourceModule()`.
// Loads it (kept for the life of the process) and returns its resources; on failure returns null and sets
// `error` to the system's reason (for a missing file the system's "No such file or directory" text).
ResourceHandle loadResourceLibrary(const std::wstring& path, std::wstring& error);

}  // namespace ui

// The resource module that template and string lookups try first.
ui::ResourceHandle AfxGetResourceHandle();
void AfxSetResourceHandle(ui::ResourceHandle handle);

// A cursor of the resources; null when no resource module has cursor `id`.
using HCURSOR = const ui::CursorShape*;
HCURSOR AfxLoadCursor(int id);

// Loads string `id` into `out`; false (and `out` emptied) when no resource module has it.
bool AfxLoadString(int id, std::wstring& out);
