// Asks the user for a point on the command line, optionally with keywords offered instead.
#pragma once

#include "cad/AcUiPromptBase.h"
#include "points/KoPoint.h"
#include "sdk/AcChar.h"
#include "sdk/AcGePoint3d.h"
#include "sdk/ResultCodes.h"

#include <string>

class AcUiKeyword;

class AcUiPromptPoint : public AcUiPromptBase {
 public:
  // Shows the message (with " [local/names]" added when keywords are given) and answers the host's
  // result: RTNORM with a new point, RTKWORD with ChosenKeyword() set, RTCAN for Escape, RTNONE for an
  // empty answer; anything else as the host gave it. The point stays as it was unless RTNORM.
  // `basePoint` (may be null) draws the rubber band from there.
  int GetPoint(const std::wstring& message, const AcGePoint3d* basePoint = nullptr,
               const AcUiKeyword* keywords = nullptr);

  // The last point, as the host delivered it (no coordinate system conversion here).
  AcGePoint3d Point() const { return {x_, y_, z_}; }
  KoPoint PointAsKoPoint() const;

 private:
  double x_ = 0.0, y_ = 0.0, z_ = 0.0;
};
