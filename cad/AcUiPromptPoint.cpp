#include "cad/AcUiPromptPoint.h"

#include "cad/AcUiKeyword.h"
#include "sdk/AcEd.h"

int AcUiPromptPoint::GetPoint(const std::wstring& message, const AcGePoint3d* basePoint,
                              const AcUiKeyword* keywords) {
  std::wstring prompt = message;
  if (keywords != nullptr) {
    prompt += L" " + keywords->DisplayText();
    // Flags 0: an empty answer is the caller's to interpret, not refused here.
    acedInitGet(0, keywords->InputList().c_str());
  }

  ads_point base{};
  if (basePoint != nullptr) {
    base[0] = basePoint->x;
    base[1] = basePoint->y;
    base[2] = basePoint->z;
  }
  ads_point result{x_, y_, z_};
  int status = acedGetPoint(basePoint != nullptr ? base : nullptr, prompt.c_str(), result);
  if (status == RTNORM) {
    x_ = result[0];
    y_ = result[1];
    z_ = result[2];
  }

  if (status == RTKWORD && keywords != nullptr) {
    ACHAR typed[kAcedInputBufferSize] = {};
    SetChosenKeyword(acedGetInput(typed, kAcedInputBufferSize) == RTNORM ? keywords->IndexOf(typed) : -1);
  }
  return status;
}

KoPoint AcUiPromptPoint::PointAsKoPoint() const {
  KoPoint point;
  point.x = x_;
  point.y = y_;
  point.z = z_;
  return point;
}
