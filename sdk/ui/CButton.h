// Push buttons and check boxes. A click reaches the parent as OnCommand(id, BN_CLICKED); an automatic check box
// changes its state before that.
#pragma once

#include "sdk/ui/CWnd.h"

class CButton : public CWnd {
 public:
  int GetCheck() const;
  void SetCheck(int check);
};
