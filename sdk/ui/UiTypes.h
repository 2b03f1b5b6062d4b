// Small value types and the numeric constants of the dialog framework. The numbers are those of the classic
// Windows dialog API, so that dialog code written against it reads the same here.
#pragma once

#include <string>

struct CPoint {
  int x = 0;
  int y = 0;
  CPoint() = default;
  CPoint(int px, int py) : x(px), y(py) {}
  bool operator==(const CPoint&) const = default;
};

struct CSize {
  int cx = 0;
  int cy = 0;
  CSize() = default;
  CSize(int w, int h) : cx(w), cy(h) {}
  bool operator==(const CSize&) const = default;
};

struct CRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  CRect() = default;
  CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool operator==(const CRect&) const = default;
};

// Opaque window handle: null when a window object has no window.
using HWND = struct HWND__*;

// Command ids of the standard buttons and the answers of message boxes.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
// The id of labels and lines that nobody addresses.
inline constexpr int IDC_STATIC = -1;

// Message box buttons (low nibble) and icons.
inline constexpr unsigned MB_OK = 0x0;
inline constexpr unsigned MB_OKCANCEL = 0x1;
inline constexpr unsigned MB_ABORTRETRYIGNORE = 0x2;
inline constexpr unsigned MB_YESNOCANCEL = 0x3;
inline constexpr unsigned MB_YESNO = 0x4;
inline constexpr unsigned MB_RETRYCANCEL = 0x5;
inline constexpr unsigned MB_ICONHAND = 0x10;
inline constexpr unsigned MB_ICONERROR = 0x10;
inline constexpr unsigned MB_ICONQUESTION = 0x20;
inline constexpr unsigned MB_ICONEXCLAMATION = 0x30;
inline constexpr unsigned MB_ICONWARNING = 0x30;
inline constexpr unsigned MB_ICONINFORMATION = 0x40;
inline constexpr unsigned MB_ICONASTERISK = 0x40;

// File dialog options.
inline constexpr unsigned OFN_READONLY = 0x1;
inline constexpr unsigned OFN_OVERWRITEPROMPT = 0x2;
inline constexpr unsigned OFN_HIDEREADONLY = 0x4;
inline constexpr unsigned OFN_FILEMUSTEXIST = 0x1000;

// ShowWindow.
inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOW = 5;

// Window styles (high word) and control styles (low word).
inline constexpr unsigned WS_CHILD = 0x40000000;
inline constexpr unsigned WS_VISIBLE = 0x10000000;
inline constexpr unsigned WS_DISABLED = 0x08000000;
inline constexpr unsigned WS_BORDER = 0x00800000;
inline constexpr unsigned WS_TABSTOP = 0x00010000;
// A colour as 0x00BBGGRR.
using COLORREF = unsigned;

inline constexpr unsigned BS_PUSHBUTTON = 0x0;
inline constexpr unsigned BS_DEFPUSHBUTTON = 0x1;
inline constexpr unsigned BS_CHECKBOX = 0x2;
inline constexpr unsigned BS_AUTOCHECKBOX = 0x3;
inline constexpr unsigned ES_AUTOHSCROLL = 0x80;
inline constexpr unsigned ES_READONLY = 0x800;
inline constexpr unsigned SS_ETCHEDHORZ = 0x10;
inline constexpr unsigned SS_NOTIFY = 0x100;  // a label that reports clicks (a link)
inline constexpr unsigned UDS_WRAP = 0x1;
inline constexpr unsigned UDS_SETBUDDYINT = 0x2;
inline constexpr unsigned UDS_ARROWKEYS = 0x20;
inline constexpr unsigned LVS_REPORT = 0x1;
inline constexpr unsigned LVS_SHOWSELALWAYS = 0x8;
inline constexpr unsigned LVS_OWNERDRAWFIXED = 0x400;
inline constexpr unsigned LVS_OWNERDATA = 0x1000;

// Check states.
inline constexpr int BST_UNCHECKED = 0;
inline constexpr int BST_CHECKED = 1;

// Command notification codes (second argument of OnCommand).
inline constexpr int BN_CLICKED = 0;
inline constexpr int STN_CLICKED = 0;
inline constexpr int EN_SETFOCUS = 0x100;
inline constexpr int EN_KILLFOCUS = 0x200;
inline constexpr int EN_CHANGE = 0x300;

// Notification codes (UiNotify::code).
inline constexpr int NM_CLICK = -2;
inline constexpr int NM_DBLCLK = -3;
inline constexpr int NM_RCLICK = -5;
inline constexpr int LVN_ITEMCHANGED = -101;
inline constexpr int LVN_COLUMNCLICK = -108;
inline constexpr int LVN_GETDISPINFO = -177;
inline constexpr int LVN_KEYDOWN = -155;
inline constexpr int UDN_DELTAPOS = -722;

// List item states and search flags.
inline constexpr unsigned LVIS_FOCUSED = 0x1;
inline constexpr unsigned LVIS_SELECTED = 0x2;
inline constexpr unsigned LVNI_ALL = 0x0;
inline constexpr unsigned LVNI_FOCUSED = 0x1;
inline constexpr unsigned LVNI_SELECTED = 0x2;
inline constexpr unsigned LVSICF_NOINVALIDATEALL = 0x1;
inline constexpr unsigned LVSICF_NOSCROLL = 0x2;
inline constexpr int LVCFMT_LEFT = 0;
inline constexpr int LVCFMT_RIGHT = 1;

// Virtual key codes.
inline constexpr unsigned VK_BACK = 0x08;
inline constexpr unsigned VK_TAB = 0x09;
inline constexpr unsigned VK_RETURN = 0x0D;
inline constexpr unsigned VK_SHIFT = 0x10;
inline constexpr unsigned VK_CONTROL = 0x11;
inline constexpr unsigned VK_ESCAPE = 0x1B;
inline constexpr unsigned VK_SPACE = 0x20;
inline constexpr unsigned VK_PRIOR = 0x21;
inline constexpr unsigned VK_NEXT = 0x22;
inline constexpr unsigned VK_END = 0x23;
inline constexpr unsigned VK_HOME = 0x24;
inline constexpr unsigned VK_LEFT = 0x25;
inline constexpr unsigned VK_UP = 0x26;
inline constexpr unsigned VK_RIGHT = 0x27;
inline constexpr unsigned VK_DOWN = 0x28;
inline constexpr unsigned VK_DELETE = 0x2E;
inline constexpr unsigned VK_F1 = 0x70;
inline constexpr unsigned VK_F2 = 0x71;

// Modifier bits that accompany a key.
inline constexpr unsigned MK_SHIFT = 0x4;
inline constexpr unsigned MK_CONTROL = 0x8;

// Popup menu options and item flags.
inline constexpr unsigned TPM_LEFTALIGN = 0x0;
inline constexpr unsigned TPM_RIGHTBUTTON = 0x2;
inline constexpr unsigned TPM_RETURNCMD = 0x100;
inline constexpr unsigned MF_STRING = 0x0;
inline constexpr unsigned MF_ENABLED = 0x0;
inline constexpr unsigned MF_GRAYED = 0x1;
inline constexpr unsigned MF_DISABLED = 0x2;
inline constexpr unsigned MF_BYCOMMAND = 0x0;
inline constexpr unsigned MF_SEPARATOR = 0x800;

// Beep types.
inline constexpr unsigned MB_SIMPLEBEEP = 0xFFFFFFFF;

class CWnd;

namespace ui {

// What a control tells its owner beyond a plain command: list and up-down notifications. One record serves all
// of them; the fields that do not belong to a code keep their defaults.
struct UiNotify {
  CWnd* from = nullptr;
  int idFrom = 0;
  int code = 0;
  int row = -1;             // list row, -1 for none
  int col = -1;             // list column, -1 for none
  int pos = 0;              // up-down position before the change
  int delta = 0;            // up-down change
  unsigned key = 0;         // LVN_KEYDOWN: virtual key
  unsigned modifiers = 0;   // MK_SHIFT / MK_CONTROL
  unsigned oldState = 0;    // LVN_ITEMCHANGED
  unsigned newState = 0;
  CPoint point;             // NM_RCLICK: screen position
  std::wstring* text = nullptr;  // LVN_GETDISPINFO: where the cell text goes
  long result = 0;          // the owner's answer (UDN_DELTAPOS: non-zero prevents the change)
};

}  // namespace ui
