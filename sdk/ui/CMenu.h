// Menus from resources or built on the fly, tracked as pop-ups.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sdk/ui/Resources.h"

class CWnd;

class CMenu {
 public:
  CMenu();
  ~CMenu();
  CMenu(const CMenu&) = delete;
  CMenu& operator=(const CMenu&) = delete;

  // Loads menu `id` from the resources; its first item is usually the pop-up that GetSubMenu(0) returns.
  bool LoadMenu(int id);
  bool CreatePopupMenu();
  bool AppendMenu(unsigned flags, int id = 0, const std::wstring& text = {});
  bool DestroyMenu();
  CMenu* GetSubMenu(int position);
  int GetMenuItemCount() const;
  int GetMenuItemID(int position) const;
  // Returns the previous state (MF_ENABLED or MF_GRAYED), or -1 when there is no such command.
  int EnableMenuItem(int id, unsigned enable);

  // Shows the menu as a pop-up at screen position (x, y) and waits for the user. With TPM_RETURNCMD returns the
  // chosen command (0 when dismissed) and sends nothing; otherwise sends the command to `owner`'s OnCommand and
  // returns whether one was chosen.
  int TrackPopupMenu(unsigned flags, int x, int y, CWnd* owner);

  const std::vector<ui::MenuItem>& GetItems() const { return items_; }

 private:
  std::vector<ui::MenuItem> items_;
  std::vector<std::unique_ptr<CMenu>> subMenus_;
  bool valid_ = false;
};
