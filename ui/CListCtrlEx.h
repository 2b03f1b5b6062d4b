// The list under every table of the module: a virtual report list whose rows are references to the derived
// class's own objects (a point of a point list, say). The window stores no texts; it asks for a cell when it
// shows or exports it. Around that the control gives every table the same handling: sorting by a header click
// or from the context menu, the context menu itself (sort, spreadsheet, print, delete), keys, in-place editing,
// fitting the columns to the window, and writing the table as a separated-values file.
//
// A derived class answers the overridable operations below; their defaults say "no", so a bare list shows
// empty cells and refuses to sort.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/Resources.h"
#include "ui/CHeaderCtrlEx.h"

class CListCtrlEx;
class CInPlaceEdit;
class CInPlaceList;

// One row: the derived class's object behind it. Two references are equal when they refer to the same object;
// their order is asked of the list that is being sorted.
class CListCtrlExDataReference {
 public:
  CListCtrlExDataReference() = default;
  explicit CListCtrlExDataReference(void* data) : m_data(data) {}
  virtual ~CListCtrlExDataReference() = default;
  CListCtrlExDataReference(const CListCtrlExDataReference&) = default;
  CListCtrlExDataReference& operator=(const CListCtrlExDataReference&) = default;

  void* Data() const { return m_data; }
  bool operator==(const CListCtrlExDataReference& other) const { return m_data == other.m_data; }
  // Order under the running sort (column and direction of the sort context).
  int Compare(const CListCtrlExDataReference& other) const;
  bool operator<(const CListCtrlExDataReference& other) const { return Compare(other) < 0; }
  bool operator<=(const CListCtrlExDataReference& other) const { return Compare(other) <= 0; }

 private:
  void* m_data = nullptr;
};

// The field separator of the user's locale (at most 8 characters); ";" when the system cannot tell.
class CCSVListSeperator {
 public:
  CCSVListSeperator();
  virtual ~CCSVListSeperator() = default;
  const std::wstring& Get() const { return m_separator; }

 private:
  std::wstring m_separator;
};

class CListCtrlEx : public CListCtrl {
 public:
  // What the Delete entry and key do.
  enum : int { kDeleteAfterAsking = 1, kDeleteWithoutAsking = 2, kDeleteNothing = 0 };
  // What a cell offers for editing (GetCellEditKind).
  enum : int { kEditNone = 0, kEditText = 1, kEditChoice = 2 };
  // Cells of check boxes answer this text; drawing and export show the check state instead.
  static constexpr const wchar_t* kCheckMarker = L"@C";
  // The cell buffer of exports, in characters.
  static constexpr int kCellBufferLength = 499;

  CListCtrlEx();
  ~CListCtrlEx() override;

  // --- What a derived class answers -------------------------------------------------------------------
  // The objects that become rows, in row order, until null.
  virtual void* GetFirstItem();
  virtual void* GetNextItem(void* previous);
  // Header text, alignment (0 left, 1 right) and width in pixels of a column; false when there is none.
  virtual bool GetColumnHeader(std::wstring& text, int& alignment, int& width, int column);
  // The text of a cell into `buffer` (`length` characters with the terminator); false when it has none.
  virtual bool GetCellText(wchar_t* buffer, int length, void* data, int row, int column);
  virtual bool GetCheckState(int row, int column, int reserved);
  // Deletes the object of a row; true when the control must rebuild its rows itself.
  virtual bool DeleteDataItem(int row);
  virtual bool IsColumnSortable(int column);
  // Negative when A sorts before B in ascending order, 0 when equal, positive after.
  virtual int CompareItems(int column, void* a, void* b);
  // Called after the window is gone (unless the keep flag is set).
  virtual void OnDestroyList();
  // In-place editing: which editor a cell takes, the choices of a drop-down cell, and the edited text handed
  // back (false: refused, the cell keeps its value).
  virtual int GetCellEditKind(int row, int column);
  virtual bool GetCellChoices(int row, int column, std::vector<std::wstring>& choices);
  virtual bool SetCellText(int row, int column, const std::wstring& text);
  // Builds the rows again from GetFirstItem/GetNextItem, keeping the selected objects selected.
  virtual void Refresh();

  // --- What the control offers -------------------------------------------------------------------------
  // Inserts the columns 0, 1, ... that GetColumnHeader answers, until it answers false.
  int InsertColumnsFromHeaders();
  int ColumnCount() const { return m_columnCount; }
  int RowCount() const { return static_cast<int>(m_rows.size()); }
  void* RowData(int row) const;
  // The first row that holds `data`, -1 when none.
  int FindRow(const void* data) const;

  void SortByColumn(int column, bool ascending);
  void DeleteSelected();
  // Fits the columns to the client width: one column (its own width takes the whole difference) or all of
  // them (-1: the difference shared out). The remainder of the sharing is not distributed.
  void FitColumns(int column = -1);
  // Writes the table with the user's list separator; with `openInSpreadsheet` the spreadsheet program opens
  // it. False when the file cannot be written (then nothing is opened).
  bool WriteSeparatedFile(const std::wstring& path, bool withHeader, bool openInSpreadsheet);
  // Writes the table with `separator`, header row included; never opens a program.
  bool WriteSeparatedFile(const std::wstring& path, const std::wstring& separator);
  void ExportToSpreadsheet();
  void PrintList();
  // Opens the editor the cell takes (if any) over it.
  void EditCell(int row, int column);
  // Ends a running in-place edit; with `accept` the text goes to SetCellText.
  void EndEdit(bool accept);
  CWnd* Editor() const;
  // What a cell shows: its text, a check-box cell as "[x]" or "[ ]".
  std::wstring GetCellDisplayText(int row, int column) override;

  int GetDeleteMode() const { return m_deleteMode; }
  void SetDeleteMode(int mode) { m_deleteMode = mode; }
  void SetKeepTab(bool keep) { m_keepTab = keep; }
  void SetKeepOnDestroy(bool keep) { m_keepOnDestroy = keep; }
  CHeaderCtrlEx& Header() { return m_header; }
  const std::vector<CListCtrlExDataReference>& Selection() const { return m_selection; }
  int CurrentRow() const { return m_currentRow; }
  int MenuRow() const { return m_menuRow; }
  int MenuColumn() const { return m_menuColumn; }
  // Keyboard movement: whether the last navigation key went up (Page Up, Up) or down.
  bool MovingByKeyboard() const { return m_keyboardMove; }
  bool MovingUp() const { return m_keyboardUp; }

  // --- Process-wide -------------------------------------------------------------------------------------
  // The language test and the resources of the chosen language (the module sets both; without them the
  // lists speak German and look resources up as the framework does).
  using LanguageTest = bool (*)();
  using ResourceSource = ui::ResourceHandle (*)();
  static void SetLanguage(LanguageTest isGerman, ResourceSource resources);
  static LanguageTest GetLanguageTest();
  static ResourceSource GetResourceSource();
  static bool LanguageIsGerman();
  // Runs the list-control version check once per process.
  static void CheckCommonControls();
  // The check itself: passes from version 5.0 on; below it asks Abort/Retry/Ignore and ends the process with
  // exit code 0 unless the user ignores it. True when the module may go on.
  static bool VerifyCommonControls();
  // The sort context: the list being sorted, its column and direction.
  static CListCtrlEx* SortingList();
  static int SortingColumn();
  static bool SortingAscending();

 protected:
  void PreSubclassWindow() override;
  bool OnNotifyReflect(ui::UiNotify& notify) override;
  bool OnCommand(int id, int code) override;
  bool PreTranslateKeyDown(CWnd& target, unsigned key, unsigned modifiers) override;
  void OnDestroy() override;
  // After the window is gone: OnDestroyList and the clean-up, unless the keep flag says the rows stay.
  void PostNcDestroy() override;

  // Sets the window's row count to the rows held, without scrolling.
  void UpdateRowCount();
  // Replaces the rows (in this order) and selects again what was selected.
  void SetRows(std::vector<CListCtrlExDataReference> rows);
  // Adds one row at the end, for an object that the source appended after its last one.
  void AppendRow(void* data);
  // True while the rows stand in the order GetFirstItem/GetNextItem give them (no sort since the last
  // Refresh), so that an object appended to the source may simply become the last row.
  bool RowsInSourceOrder() const { return m_rowsInSourceOrder; }

 private:
  friend class CListCtrlExDataReference;

  void OnKeyDownInList(unsigned key, unsigned modifiers);
  void OnColumnClick(int column);
  void OnContextMenu(int row, int column);
  void OnItemChanged(const ui::UiNotify& notify);
  void Reselect();
  void Deselect();
  int CompareRows(const CListCtrlExDataReference& a, const CListCtrlExDataReference& b);
  bool WriteTable(const std::wstring& path, const std::wstring& separator, bool withHeader);
  void OpenInSpreadsheet(const std::wstring& path);
  CRect CellRect(int row, int column) const;

  std::vector<CListCtrlExDataReference> m_rows;
  std::vector<CListCtrlExDataReference> m_selection;
  CHeaderCtrlEx m_header;
  int m_redrawSuppressed = 0;
  int m_columnCount = 0;
  bool m_styleSet = false;
  int m_deleteMode = kDeleteAfterAsking;
  int m_menuRow = -1;
  int m_menuColumn = 0;
  int m_currentRow = -1;
  bool m_keepTab = false;
  bool m_keepOnDestroy = false;
  bool m_keyboardMove = false;
  bool m_keyboardUp = false;
  // Selection changes made by the control itself (sorting, rebuilding) do not touch the selection array.
  bool m_syncingSelection = false;
  bool m_rowsInSourceOrder = true;
  CWnd* m_editor = nullptr;
  int m_editRow = -1;
  int m_editColumn = -1;
};
