// The user's side of the dialog framework: what a person does with the mouse and keyboard, turned into the
// events a dialog receives. The headless script drives these; a windowed backend calls them from its event
// handlers. Every action checks that the user could do it (the control exists, is of the right kind, visible and
// enabled) and throws UserActionError with a message naming the control otherwise.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "sdk/ui/CDialog.h"

namespace host::ui {

class UserActionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The open dialog made from template `templateId` (the newest when there are several); throws when none.
CDialog& findOpenDialog(int templateId);
// How many dialogs with this template were opened so far (counted when their window is built).
int dialogsOpened(int templateId);
void noteDialogOpened(int templateId);
// Control `id` of `dialog`; throws when there is none (ids that several labels share, -1, are not addressable).
CWnd& findControl(CDialog& dialog, int id);

// The word for a window's kind used in dumps and messages: static, link, line, group, edit, button, checkbox,
// updown, list, combo, header, toolbar, dialog, frame.
std::string kindWord(const CWnd& window);
// "control 4005 of dialog 4000"
std::string describe(const CWnd& window);

// Replaces the whole text of an edit, as selecting all and typing; one EN_CHANGE.
void typeText(CWnd& edit, const std::wstring& text);
// Presses a push button or clicks a check box (an automatic one changes its state first).
void clickButton(CWnd& button);
// Clicks a check box if it is not already in that state.
void setCheck(CWnd& checkBox, bool checked);
void pressUpDown(CWnd& upDown, bool up);
// A key in a control; `ch` is the character the key types (0 for none).
void pressKey(CWnd& control, unsigned key, unsigned modifiers, wchar_t ch);
// Selects exactly `rows` of a list (the last one gets the focus); an empty list clears the selection.
void selectRows(CWnd& list, const std::vector<int>& rows);
void clickHeader(CWnd& list, int column);
// The user dragged the divider after `column` of a list's header: the column is `width` pixels wide now.
void resizeColumn(CWnd& list, int column, int width);
// Chooses entry `index` of a drop-down list (CBN_SELCHANGE).
void chooseEntry(CWnd& comboBox, int index);
// A right click on a cell; row -1 is the empty space below the rows.
void rightClickCell(CWnd& list, int row, int column);
// Presses the toolbar button with command `id`.
void pressToolbarButton(int id);

}  // namespace host::ui
