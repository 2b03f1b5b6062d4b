#include "capture/ViraPtPickCommand.h"

#include "cad/AcUiKeyword.h"
#include "cad/AcUiPromptPoint.h"
#include "capture/CDlgPickPoints.h"
#include "sdk/ResultCodes.h"

void ViraPtPickCommand() {
  if (CDlgPickPoints::GetOrCreate() == nullptr) return;

  AcUiKeyword keywords;
  keywords.Add(L"Abbrechen", L"cancel");
  AcUiPromptPoint prompt;
  while (prompt.GetPoint(L"\nPunkt", nullptr, &keywords) == RTNORM) {
    // The point as the prompt delivered it; everything but the coordinates starts at zero.
    KoPoint point;
    const AcGePoint3d picked = prompt.Point();
    point.x = picked.x;
    point.y = picked.y;
    point.z = picked.z;
    // The dialog may have gone while the prompt waited (its OK ends the prompt anyway).
    if (CDlgPickPoints* dialog = CDlgPickPoints::Instance()) dialog->AddPoint(point);
  }
  // Escape, the keyword or an empty answer: the dialog goes without saving.
  if (CDlgPickPoints* dialog = CDlgPickPoints::Instance()) dialog->Close();
}
