// What the lists need of the module's language: whether the user interface is German (menus, questions) and
// a scope that makes the chosen language's resources current while a menu or string is loaded.
#pragma once

#include "sdk/ui/Resources.h"

class CListResourceScope {
 public:
  CListResourceScope();
  ~CListResourceScope();
  CListResourceScope(const CListResourceScope&) = delete;
  CListResourceScope& operator=(const CListResourceScope&) = delete;

 private:
  ui::ResourceHandle m_previous;
};
