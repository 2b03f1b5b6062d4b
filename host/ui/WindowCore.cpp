// Creation, destruction, liveness and event routing of windows.
#include <algorithm>
#include <mutex>
#include <unordered_set>

#include "host/ui/UiBackend.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CButton.h"
#include "sdk/ui/CComboBox.h"
#include "sdk/ui/CEdit.h"
#include "sdk/ui/CListCtrl.h"
#include "sdk/ui/CSpinButtonCtrl.h"
#include "sdk/ui/CStatic.h"

namespace ui::detail {
namespace {

// Window objects may be made on a worker thread (a dialog object before it is shown), so the registry locks.
std::mutex registryMutex;
std::unordered_set<const CWnd*>& liveObjects() {
  static std::unordered_set<const CWnd*> objects;
  return objects;
}
std::vector<CWnd*>& topLevels() {
  static std::vector<CWnd*> windows;
  return windows;
}

}  // namespace

void registerObject(const CWnd* window) {
  std::lock_guard lock(registryMutex);
  liveObjects().insert(window);
}

void unregisterObject(const CWnd* window) {
  std::lock_guard lock(registryMutex);
  liveObjects().erase(window);
  auto& tops = topLevels();
  tops.erase(std::remove(tops.begin(), tops.end(), window), tops.end());
}

bool isAlive(const CWnd* window) {
  std::lock_guard lock(registryMutex);
  return window != nullptr && liveObjects().count(window) != 0;
}

bool isLiveHandle(HWND hwnd) {
  std::lock_guard lock(registryMutex);
  for (const CWnd* window : liveObjects())
    if (window->GetSafeHwnd() == hwnd) return hwnd != nullptr;
  return false;
}

void createWindow(CWnd& window, ControlKind kind, int id, const std::wstring& text, unsigned style,
                  const CRect& rect, CWnd* parent, std::unique_ptr<CWnd> owned) {
  WindowData& d = dataOf(window);
  d.self = &window;
  d.created = true;
  d.kind = kind;
  d.id = id;
  d.text = text;
  d.style = style;
  d.rect = rect;
  d.enabled = (style & WS_DISABLED) == 0;
  d.parent = parent;
  if (parent != nullptr) {
    dataOf(*parent).children.push_back(ChildSlot{&window, std::move(owned)});
  } else {
    std::lock_guard lock(registryMutex);
    topLevels().push_back(&window);
  }
  if (kind == ControlKind::ListView) {
    auto header = std::make_unique<CHeaderCtrl>();
    CHeaderCtrl& ref = *header;
    createWindow(ref, ControlKind::Header, 0, {}, WS_CHILD | WS_VISIBLE, CRect(0, 0, rect.Width(), 0), &window,
                 std::move(header));
  }
  host::ui::backend().windowCreated(window);
}

CWnd& createTemplateControl(CWnd& dialog, const ControlTemplate& control) {
  std::unique_ptr<CWnd> object;
  switch (control.kind) {
    case ControlKind::Edit: object = std::make_unique<CEdit>(); break;
    case ControlKind::Button:
    case ControlKind::CheckBox: object = std::make_unique<CButton>(); break;
    case ControlKind::UpDown: object = std::make_unique<CSpinButtonCtrl>(); break;
    case ControlKind::ListView: object = std::make_unique<CListCtrl>(); break;
    case ControlKind::ComboBox: object = std::make_unique<CComboBox>(); break;
    default: object = std::make_unique<CStatic>(); break;
  }
  CRect rect = control.rect;
  dialog.MapDialogRect(rect);
  CWnd& ref = *object;
  createWindow(ref, control.kind, control.id, control.text, control.style | WS_CHILD | WS_VISIBLE, rect, &dialog,
               std::move(object));
  return ref;
}

namespace {

// Takes the child slot of `window` out of its parent; the framework's own object comes back to be deleted later.
std::unique_ptr<CWnd> unlinkFromParent(CWnd& window) {
  WindowData& d = dataOf(window);
  if (d.parent == nullptr) {
    std::lock_guard lock(registryMutex);
    auto& tops = topLevels();
    tops.erase(std::remove(tops.begin(), tops.end(), &window), tops.end());
    return nullptr;
  }
  auto& siblings = dataOf(*d.parent).children;
  for (auto it = siblings.begin(); it != siblings.end(); ++it) {
    if (it->window == &window) {
      std::unique_ptr<CWnd> owned = std::move(it->owned);
      siblings.erase(it);
      return owned;
    }
  }
  return nullptr;
}

}  // namespace

bool destroyWindow(CWnd& window) {
  WindowData& d = dataOf(window);
  if (!d.created || d.destroying) return false;
  d.destroying = true;
  window.OnDestroy();
  // Children go first, newest first, so that each one still sees its parent.
  while (!dataOf(window).children.empty()) {
    CWnd* child = dataOf(window).children.back().window;
    if (!destroyWindow(*child)) {
      // A child in the middle of its own destruction: drop it from the list.
      dataOf(window).children.pop_back();
    }
  }
  forgetFocus(window);
  host::ui::backend().windowDestroyed(window);
  // The framework's own control object is deleted only after its PostNcDestroy has run.
  std::unique_ptr<CWnd> owned = unlinkFromParent(window);
  dataOf(window) = WindowData{};
  dataOf(window).self = &window;
  window.PostNcDestroy();  // may delete `window`
  return true;
}

void sendCommand(CWnd& control, int code) {
  const int id = control.GetDlgCtrlID();
  CWnd* parent = control.GetParent();
  if (control.OnCommandReflect(code)) return;
  if (isAlive(parent) && parent->GetSafeHwnd() != nullptr) parent->OnCommand(id, code);
}

long sendNotify(CWnd& control, UiNotify& notify) {
  notify.from = &control;
  notify.idFrom = control.GetDlgCtrlID();
  CWnd* parent = control.GetParent();
  if (control.OnNotifyReflect(notify)) return notify.result;
  if (isAlive(parent) && parent->GetSafeHwnd() != nullptr) parent->OnNotify(notify);
  return notify.result;
}

std::vector<CWnd*> openDialogs() {
  std::lock_guard lock(registryMutex);
  std::vector<CWnd*> dialogs;
  for (CWnd* window : topLevels())
    if (dataOf(*window).kind == ControlKind::Dialog) dialogs.push_back(window);
  return dialogs;
}

std::vector<CWnd*> liveToolbars() {
  std::vector<CWnd*> bars;
  std::vector<CWnd*> all;
  {
    std::lock_guard lock(registryMutex);
    all = topLevels();
  }
  for (CWnd* top : all) {
    if (dataOf(*top).kind == ControlKind::ToolBar) bars.push_back(top);
    std::vector<CWnd*> below;
    collectDescendants(*top, below);
    for (CWnd* window : below)
      if (dataOf(*window).kind == ControlKind::ToolBar) bars.push_back(window);
  }
  return bars;
}

CWnd* topLevelOf(CWnd& window) {
  CWnd* current = &window;
  while (dataOf(*current).parent != nullptr && dataOf(*current).kind != ControlKind::Dialog)
    current = dataOf(*current).parent;
  return current;
}

void collectDescendants(const CWnd& window, std::vector<CWnd*>& out) {
  for (const ChildSlot& slot : dataOf(window).children) {
    out.push_back(slot.window);
    collectDescendants(*slot.window, out);
  }
}

}  // namespace ui::detail
