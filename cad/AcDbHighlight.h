// Shows an entity highlighted for as long as the guard lives: feedback while the user answers a prompt
// about it.
#pragma once

#include "sdk/AcDbObjectId.h"

class AcDbHighlight {
 public:
  explicit AcDbHighlight(AcDbObjectId entityId);
  virtual ~AcDbHighlight();
  AcDbHighlight(const AcDbHighlight&) = delete;
  AcDbHighlight& operator=(const AcDbHighlight&) = delete;

  // True while this guard shows the entity highlighted; stays true after a removal that failed.
  bool IsHighlighted() const { return highlighted_; }

 private:
  AcDbObjectId entityId_;
  bool highlighted_ = false;
};
