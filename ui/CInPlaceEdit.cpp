#include "ui/CInPlaceEdit.h"

#include "ui/CListCtrlEx.h"

bool CInPlaceEdit::Open(const CRect& cell, const std::wstring& text) {
  if (!Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cell, &m_list, kEditorId)) return false;
  SetWindowText(text);
  SetSel(0, -1);
  SetFocus();
  return true;
}

void CInPlaceEdit::OnKeyDown(unsigned key, unsigned modifiers) {
  if (key == VK_RETURN || key == VK_ESCAPE) {
    m_list.EndEdit(key == VK_RETURN);  // destroys this editor: nothing of it may be touched afterwards
    return;
  }
  CEdit::OnKeyDown(key, modifiers);
}

void CInPlaceEdit::OnKillFocus(CWnd* next) {
  CEdit::OnKillFocus(next);
  if (m_list.Editor() == this) m_list.EndEdit(true);
}
