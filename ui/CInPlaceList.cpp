#include "ui/CInPlaceList.h"

#include <algorithm>

#include "ui/CListCtrlEx.h"

bool CInPlaceList::Open(const CRect& cell, const std::vector<std::wstring>& choices, const std::wstring& current) {
  CRect dropped = cell;
  dropped.bottom += cell.Height() * static_cast<int>(std::min<std::size_t>(choices.size(), 8));
  if (!Create(WS_CHILD | WS_VISIBLE | WS_BORDER | CBS_DROPDOWNLIST, dropped, &m_list, kEditorId)) return false;
  for (const std::wstring& choice : choices) AddString(choice);
  const int found = FindStringExact(-1, current);
  SetCurSel(found != CB_ERR ? found : 0);
  SetFocus();
  m_open = true;
  return true;
}

void CInPlaceList::OnKeyDown(unsigned key, unsigned modifiers) {
  if (key == VK_RETURN || key == VK_ESCAPE) {
    m_list.EndEdit(key == VK_RETURN);  // destroys this editor
    return;
  }
  CComboBox::OnKeyDown(key, modifiers);
}

void CInPlaceList::OnKillFocus(CWnd* next) {
  CComboBox::OnKillFocus(next);
  if (m_list.Editor() == this) m_list.EndEdit(true);
}

bool CInPlaceList::OnCommandReflect(int code) {
  if (code == CBN_SELCHANGE && m_open && m_list.Editor() == this) {
    m_list.EndEdit(true);  // destroys this editor
    return true;
  }
  return CComboBox::OnCommandReflect(code);
}
