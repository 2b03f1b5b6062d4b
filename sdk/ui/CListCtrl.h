// Report-style list view. With LVS_OWNERDATA it is virtual: it holds only a row count and the state (selected,
// focused) of each row, and asks for the text of a cell with LVN_GETDISPINFO (UiNotify::text) when it draws or
// exports it; a derived list class answers in OnNotifyReflect, any other owner in OnNotify. Without that style
// it keeps the texts itself (InsertItem / SetItemText).
//
// What the user does arrives as notifications, first at the list, then at its parent:
//   LVN_COLUMNCLICK (col)      a header click
//   LVN_ITEMCHANGED (row, oldState, newState)  selection changes
//   LVN_KEYDOWN (key, modifiers)               a key that the dialog does not take itself
//   NM_RCLICK (row, col, point)                a right click on a cell (row -1 below the last row); the list
//                                               or its owner may then track a context menu
//   NM_DBLCLK (row, col)                        a double click on a cell, where an in-place editor may open
#pragma once

#include <string>

#include "sdk/ui/CHeaderCtrl.h"
#include "sdk/ui/CWnd.h"

class CListCtrl : public CWnd {
 public:
  CHeaderCtrl* GetHeaderCtrl() const;
  int InsertColumn(int column, const std::wstring& heading, int format = LVCFMT_LEFT, int width = -1);
  bool DeleteColumn(int column);
  int GetColumnCount() const;
  int GetColumnWidth(int column) const;
  bool SetColumnWidth(int column, int width);
  int GetColumnFormat(int column) const;

  void SetItemCount(int count);
  void SetItemCountEx(int count, unsigned flags = LVSICF_NOINVALIDATEALL);
  int GetItemCount() const;

  int InsertItem(int row, const std::wstring& text);
  bool SetItemText(int row, int column, const std::wstring& text);
  bool DeleteItem(int row);
  bool DeleteAllItems();
  // The text the list shows in a cell (asks the owner for a virtual list).
  std::wstring GetItemText(int row, int column);

  unsigned GetItemState(int row, unsigned mask) const;
  bool SetItemState(int row, unsigned state, unsigned mask);
  // The next row after `start` (-1: from the top) that has the state in `flags` (LVNI_ALL: any row); -1 if none.
  int GetNextItem(int start, unsigned flags) const;
  int GetSelectedCount() const;
  bool EnsureVisible(int row, bool partialOk);
  bool RedrawItems(int first, int last);
  unsigned GetExtendedStyle() const;
  void SetExtendedStyle(unsigned style);
  int GetStringWidth(const std::wstring& text) const;

  // What the list draws in a cell. The default is GetItemText(); an owner-drawn list overrides it to show what it
  // paints instead (a check mark for a check-box cell). A headless dump prints this text.
  virtual std::wstring GetCellDisplayText(int row, int column);
};

// The version of the list view control the framework provides, as major * 65536 + minor (what the common
// controls library's DllGetVersion reports on the module's home platform); 0 when it cannot be told.
unsigned AfxGetCommonControlsVersion();
