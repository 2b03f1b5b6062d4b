// A colour as a drawing stores it: an index into the 256-colour palette, with 0 meaning "by block" and
// 256 meaning "by layer".
#pragma once

#include "sdk/AcadErrorStatus.h"
#include "sdk/Adesk.h"

class AcCmColor {
 public:
  static constexpr Adesk::UInt16 kByBlock = 0;
  static constexpr Adesk::UInt16 kByLayer = 256;

  AcCmColor() = default;

  Adesk::UInt16 colorIndex() const { return index_; }
  // Indices outside 0..256 are refused and the colour stays as it was.
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index) {
    if (index > kByLayer) return Acad::eInvalidInput;
    index_ = index;
    return Acad::eOk;
  }
  bool isByLayer() const { return index_ == kByLayer; }
  bool isByBlock() const { return index_ == kByBlock; }
  bool operator==(const AcCmColor&) const = default;

 private:
  Adesk::UInt16 index_ = kByLayer;
};
