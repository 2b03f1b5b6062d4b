#include "sdk/ui/CComboBox.h"

#include <cwctype>

#include "host/ui/UiBackend.h"
#include "host/ui/WindowData.h"

using ui::detail::dataOf;

namespace {

bool inRange(const std::vector<std::wstring>& choices, int index) {
  return index >= 0 && index < static_cast<int>(choices.size());
}

bool sameNoCase(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::towlower(a[i]) != std::towlower(b[i])) return false;
  return true;
}

// The window text follows the choice.
void showChoice(CComboBox& combo) {
  auto& d = dataOf(combo);
  d.text = inRange(d.choices, d.chosen) ? d.choices[d.chosen] : std::wstring();
  if (d.created) host::ui::backend().windowChanged(combo);
}

}  // namespace

bool CComboBox::Create(unsigned style, const CRect& rect, CWnd* parent, int id) {
  return CreateControl(ui::ControlKind::ComboBox, {}, style | WS_CHILD, rect, parent, id);
}

int CComboBox::AddString(const std::wstring& text) { return InsertString(-1, text); }

int CComboBox::InsertString(int index, const std::wstring& text) {
  auto& d = dataOf(*this);
  if (index < 0 || index > static_cast<int>(d.choices.size())) index = static_cast<int>(d.choices.size());
  d.choices.insert(d.choices.begin() + index, text);
  if (d.chosen >= index) ++d.chosen;
  showChoice(*this);
  return index;
}

int CComboBox::DeleteString(int index) {
  auto& d = dataOf(*this);
  if (!inRange(d.choices, index)) return CB_ERR;
  d.choices.erase(d.choices.begin() + index);
  if (d.chosen == index) d.chosen = -1;
  if (d.chosen > index) --d.chosen;
  showChoice(*this);
  return static_cast<int>(d.choices.size());
}

void CComboBox::ResetContent() {
  dataOf(*this).choices.clear();
  dataOf(*this).chosen = -1;
  showChoice(*this);
}

int CComboBox::GetCount() const { return static_cast<int>(dataOf(*this).choices.size()); }

int CComboBox::GetCurSel() const {
  return inRange(dataOf(*this).choices, dataOf(*this).chosen) ? dataOf(*this).chosen : CB_ERR;
}

int CComboBox::SetCurSel(int index) {
  auto& d = dataOf(*this);
  if (index != -1 && !inRange(d.choices, index)) return CB_ERR;
  d.chosen = index;
  showChoice(*this);
  return index;
}

void CComboBox::GetLBText(int index, std::wstring& text) const {
  const auto& choices = dataOf(*this).choices;
  text = inRange(choices, index) ? choices[index] : std::wstring();
}

int CComboBox::FindStringExact(int start, const std::wstring& text) const {
  const auto& choices = dataOf(*this).choices;
  for (int i = start + 1; i < static_cast<int>(choices.size()); ++i)
    if (sameNoCase(choices[i], text)) return i;
  return CB_ERR;
}
