#include "sdk/ui/CMenu.h"

#include "host/ui/UiBackend.h"
#include "host/ui/UiThread.h"
#include "host/ui/WindowData.h"
#include "sdk/ui/CWnd.h"

namespace {

ui::MenuItem* findCommand(std::vector<ui::MenuItem>& items, int id) {
  for (ui::MenuItem& item : items) {
    if (item.popup.empty() && item.id == id && !item.text.empty()) return &item;
    if (ui::MenuItem* inner = findCommand(item.popup, id)) return inner;
  }
  return nullptr;
}

}  // namespace

CMenu::CMenu() = default;
CMenu::~CMenu() = default;

bool CMenu::LoadMenu(int id) {
  const ui::MenuTemplate* menu = ui::findMenuTemplate(id);
  if (menu == nullptr) return false;
  DestroyMenu();
  items_ = menu->items;
  valid_ = true;
  return true;
}

bool CMenu::CreatePopupMenu() {
  DestroyMenu();
  valid_ = true;
  return true;
}

bool CMenu::AppendMenu(unsigned flags, int id, const std::wstring& text) {
  if (!valid_) return false;
  ui::MenuItem item;
  item.id = (flags & MF_SEPARATOR) != 0 ? 0 : id;
  item.text = (flags & MF_SEPARATOR) != 0 ? std::wstring() : text;
  item.flags = flags;
  items_.push_back(std::move(item));
  return true;
}

bool CMenu::DestroyMenu() {
  const bool wasValid = valid_;
  items_.clear();
  subMenus_.clear();
  valid_ = false;
  return wasValid;
}

CMenu* CMenu::GetSubMenu(int position) {
  if (position < 0 || position >= static_cast<int>(items_.size()) || items_[position].popup.empty()) return nullptr;
  if (subMenus_.size() < items_.size()) subMenus_.resize(items_.size());
  auto& sub = subMenus_[position];
  if (!sub) {
    sub = std::make_unique<CMenu>();
    sub->items_ = items_[position].popup;
    sub->valid_ = true;
  }
  return sub.get();
}

int CMenu::GetMenuItemCount() const { return valid_ ? static_cast<int>(items_.size()) : -1; }

int CMenu::GetMenuItemID(int position) const {
  if (position < 0 || position >= static_cast<int>(items_.size())) return 0;
  return items_[position].popup.empty() ? items_[position].id : -1;
}

int CMenu::EnableMenuItem(int id, unsigned enable) {
  ui::MenuItem* item = findCommand(items_, id);
  if (item == nullptr) return -1;
  const int previous = (item->flags & (MF_GRAYED | MF_DISABLED)) != 0 ? static_cast<int>(MF_GRAYED) : 0;
  item->flags = (item->flags & ~(MF_GRAYED | MF_DISABLED)) | (enable & (MF_GRAYED | MF_DISABLED));
  return previous;
}

int CMenu::TrackPopupMenu(unsigned flags, int, int, CWnd* owner) {
  if (!valid_) return 0;
  int chosen = 0;
  host::ui::runOnUiThread([&] { chosen = host::ui::backend().trackPopupMenu(items_, owner); });
  if ((flags & TPM_RETURNCMD) != 0) return chosen;
  if (chosen != 0 && ui::detail::isAlive(owner)) owner->OnCommand(chosen, 0);
  return chosen != 0 ? 1 : 0;
}
