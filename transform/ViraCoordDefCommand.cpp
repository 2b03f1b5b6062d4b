#include "transform/ViraCoordDefCommand.h"

#include "cad/AcUiKeyword.h"
#include "cad/AcUiPromptPoint.h"
#include "sdk/ResultCodes.h"
#include "transform/CDlgMoveDrawing.h"

void ViraCoordDefCommand() {
  if (CDlgMoveDrawing::GetOrCreate() == nullptr) return;

  AcUiKeyword keywords;
  keywords.Add(L"Abbrechen", L"cancel");
  AcUiPromptPoint prompt;
  while (prompt.GetPoint(L"\nZeichnungspunkt", nullptr, &keywords) == RTNORM) {
    KoPoint point = prompt.PointAsKoPoint();
    point.number = 0;
    point.code = 0;
    // The dialog may have gone while the prompt waited (its OK or Abbrechen ends the prompt anyway).
    if (CDlgMoveDrawing* dialog = CDlgMoveDrawing::Instance()) dialog->AddDrawingPoint(point);
  }
  if (CDlgMoveDrawing* dialog = CDlgMoveDrawing::Instance()) dialog->Close();
}
