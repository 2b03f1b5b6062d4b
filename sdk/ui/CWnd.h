// The window base of the dialog framework. Dialogs, controls and toolbars derive from it; handlers are virtual
// functions. A window object exists before and after its window: GetSafeHwnd() is null until the window is
// created and again after it is destroyed.
//
// Routing: a control's command (BN_CLICKED, EN_CHANGE, ...) and notification (list, up-down) go first to the
// control itself (OnCommandReflect / OnNotifyReflect, so that a derived control class can handle its own events)
// and, when it does not take them, to its parent (OnCommand / OnNotify). A key first passes PreTranslateKeyDown
// of the focused window and each of its parents, then the dialog's own keys (Tab, Return, Escape), then
// OnKeyDown and OnChar of the control.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sdk/ui/Resources.h"
#include "sdk/ui/UiTypes.h"

// Window messages that modules send to the host's windows.
inline constexpr unsigned WM_CHAR = 0x0102;       // wParam: the character, to OnChar
inline constexpr unsigned WM_MOUSEMOVE = 0x0200;  // to OnMouseMove; makes a drawing view pick up queued input

namespace ui::detail {
struct WindowData;
struct WindowAccess;
}  // namespace ui::detail

class CWnd {
 public:
  CWnd();
  virtual ~CWnd();
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;

  HWND GetSafeHwnd() const;
  int GetDlgCtrlID() const;
  CWnd* GetParent() const;
  // The child with this id, searched depth first (so an editor placed over a list is found too).
  CWnd* GetDlgItem(int id) const;

  void SetWindowText(const std::wstring& text);
  std::wstring GetWindowText() const;
  void GetWindowText(std::wstring& text) const;
  int GetWindowTextLength() const;
  void SetDlgItemText(int id, const std::wstring& text);
  std::wstring GetDlgItemText(int id) const;
  void SetDlgItemInt(int id, int value);
  int GetDlgItemInt(int id, bool* ok = nullptr) const;
  void CheckDlgButton(int id, int check);
  int IsDlgButtonChecked(int id) const;

  // Returns whether the window was disabled before.
  bool EnableWindow(bool enable = true);
  bool IsWindowEnabled() const;
  bool ShowWindow(int show);
  bool IsWindowVisible() const;
  unsigned GetStyle() const;
  bool ModifyStyle(unsigned remove, unsigned add);

  // Rectangles in pixels; the window rectangle is relative to the parent's client area.
  void GetWindowRect(CRect& rect) const;
  void GetClientRect(CRect& rect) const;
  void MoveWindow(const CRect& rect, bool repaint = true);
  // Converts dialog units to pixels with the dialog font's metrics.
  void MapDialogRect(CRect& rect) const;
  // The width in pixels of `text` in this window's font.
  int GetTextWidth(const std::wstring& text) const;

  CWnd* SetFocus();
  static CWnd* GetFocus();
  void SetRedraw(bool redraw = true);
  void Invalidate(bool erase = true);
  void UpdateWindow();

  bool DestroyWindow();
  // Lets this object take over the existing control `id` of `parent` (made from the dialog template), so that a
  // derived control class receives its events. This object must not have a window yet.
  bool SubclassDlgItem(int id, CWnd* parent);
  bool SubclassWindow(HWND hwnd);

  int MessageBox(const std::wstring& text, const std::wstring& caption = {}, unsigned type = MB_OK);

  // The window object of a handle; null when the handle names no existing window.
  static CWnd* FromHandle(HWND hwnd);
  // Delivers a message to the window's handler (WindowProc) and returns its answer; 0 without a window.
  long SendMessage(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
  // The same, for a caller that does not wait for the answer. The host's windows queue what they receive
  // (the command line queues typed characters), so the message takes effect in the order it was posted.
  // False when there is no window.
  bool PostMessage(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);

  // Handlers. The defaults do nothing and report "not handled".
  virtual bool OnCommand(int id, int code);
  virtual bool OnNotify(ui::UiNotify& notify);
  virtual bool OnCommandReflect(int code);
  virtual bool OnNotifyReflect(ui::UiNotify& notify);
  virtual bool PreTranslateKeyDown(CWnd& target, unsigned key, unsigned modifiers);
  virtual void OnKeyDown(unsigned key, unsigned modifiers);
  virtual void OnChar(wchar_t ch);
  virtual void OnMouseMove(unsigned flags, CPoint point);
  // Every message sent or posted to the window passes here; the default hands WM_CHAR to OnChar and
  // WM_MOUSEMOVE to OnMouseMove and answers 0.
  virtual long WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
  virtual void OnSetFocus(CWnd* previous);
  virtual void OnKillFocus(CWnd* next);
  // Called when this object has just taken over a window (SubclassDlgItem, SubclassWindow) or created one with
  // CreateControl or Create, before any event reaches it: the place to adjust styles once.
  virtual void PreSubclassWindow();
  virtual void OnDestroy();
  // Called last, after the window is gone; a window object that lives on the heap may delete itself here.
  virtual void PostNcDestroy();

 protected:
  // Creates a child control at `rect` (pixels, parent client coordinates), as an in-place editor does.
  bool CreateControl(ui::ControlKind kind, const std::wstring& text, unsigned style, const CRect& rect,
                     CWnd* parent, int id);

 private:
  friend struct ui::detail::WindowAccess;
  std::unique_ptr<ui::detail::WindowData> data_;
};

// True while `hwnd` names an existing window.
bool IsWindow(HWND hwnd);

// CWnd::SendMessage / PostMessage by handle; 0 / false for a handle that names no window.
long SendMessageW(HWND hwnd, unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
bool PostMessageW(HWND hwnd, unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
