// A drop-down list placed over a list cell, for cells that take one of a few values. Choosing an entry or
// pressing Return takes it, Escape drops it, moving the focus elsewhere takes the entry shown. It deletes
// itself once its window is gone.
#pragma once

#include <string>
#include <vector>

#include "sdk/ui/CComboBox.h"

class CListCtrlEx;

class CInPlaceList : public CComboBox {
 public:
  static constexpr int kEditorId = 0x7F02;

  explicit CInPlaceList(CListCtrlEx& list) : m_list(list) {}
  // Creates the window over `cell` with the entries, shows the entry equal to `current` (else the first) and
  // takes the focus.
  bool Open(const CRect& cell, const std::vector<std::wstring>& choices, const std::wstring& current);

  void OnKeyDown(unsigned key, unsigned modifiers) override;
  void OnKillFocus(CWnd* next) override;
  bool OnCommandReflect(int code) override;

 protected:
  void PostNcDestroy() override { delete this; }

 private:
  CListCtrlEx& m_list;
  bool m_open = false;
};
