// Messages sent or posted to windows by handle, as modules address the host's windows (the command line,
// the drawing view, their own toolbar).
#include "host/ui/WindowData.h"
#include "host/ui/UiThread.h"

using ui::detail::dataOf;

CWnd* CWnd::FromHandle(HWND hwnd) {
  if (!ui::detail::isLiveHandle(hwnd)) return nullptr;
  return reinterpret_cast<ui::detail::WindowData*>(hwnd)->self;
}

long CWnd::SendMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  if (GetSafeHwnd() == nullptr) return 0;
  long result = 0;
  // Windows belong to the UI thread; a worker's message waits there like any other UI call.
  host::ui::runOnUiThread([&] {
    if (ui::detail::isAlive(this) && GetSafeHwnd() != nullptr) result = WindowProc(message, wParam, lParam);
  });
  return result;
}

bool CWnd::PostMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  if (GetSafeHwnd() == nullptr) return false;
  SendMessage(message, wParam, lParam);
  return true;
}

long CWnd::WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  switch (message) {
    case WM_CHAR:
      OnChar(static_cast<wchar_t>(wParam));
      break;
    case WM_MOUSEMOVE: {
      // lParam holds the position as two signed 16-bit halves, x in the low one.
      const auto packed = static_cast<std::uint32_t>(lParam);
      OnMouseMove(static_cast<unsigned>(wParam), CPoint(static_cast<std::int16_t>(packed & 0xFFFF),
                                                        static_cast<std::int16_t>(packed >> 16)));
      break;
    }
    default:
      break;
  }
  return 0;
}

void CWnd::OnMouseMove(unsigned, CPoint) {}

long SendMessageW(HWND hwnd, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  CWnd* window = CWnd::FromHandle(hwnd);
  return window != nullptr ? window->SendMessage(message, wParam, lParam) : 0;
}

bool PostMessageW(HWND hwnd, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
  CWnd* window = CWnd::FromHandle(hwnd);
  return window != nullptr && window->PostMessage(message, wParam, lParam);
}
