#include "cad/AcDbHighlight.h"

#include "sdk/AcDbOpen.h"

AcDbHighlight::AcDbHighlight(AcDbObjectId entityId) : entityId_(entityId) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenAcDbEntity(entity, entityId_, AcDb::kForRead) != Acad::eOk) return;
  entity->highlight(kNullSubent);
  entity->draw();
  entity->close();
  highlighted_ = true;
}

AcDbHighlight::~AcDbHighlight() {
  if (!highlighted_) return;
  AcDbEntity* entity = nullptr;
  if (acdbOpenAcDbEntity(entity, entityId_, AcDb::kForRead) != Acad::eOk) return;
  // The flag keeps saying "highlighted" when the host refused to take the highlight away.
  highlighted_ = entity->unhighlight(kNullSubent) != Acad::eOk;
  entity->draw();
  entity->close();
}
