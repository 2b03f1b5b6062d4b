// Up-down control. An arrow press asks the owner first with UDN_DELTAPOS (UiNotify: pos, delta; a non-zero
// result keeps the position); then the position moves by the delta within the range. The default range is
// 100 (lower) to 0 (upper), so with it the upper arrow gives a negative delta, as in the classic control.
#pragma once

#include "sdk/ui/CWnd.h"

class CSpinButtonCtrl : public CWnd {
 public:
  void SetRange(int lower, int upper);
  void GetRange(int& lower, int& upper) const;
  int SetPos(int pos);
  int GetPos() const;
  // With UDS_SETBUDDYINT the buddy shows the position as a number.
  CWnd* SetBuddy(CWnd* buddy);
  CWnd* GetBuddy() const;
};
