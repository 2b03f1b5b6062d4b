#include "transform/DrawingTransform.h"

#include "cad/AcDbConnector.h"
#include "cad/AcDbLayers.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbSymbolTables.h"
#include "sdk/AcEd.h"

#include <memory>

int TransformDrawing(const AcGeMatrix3d& matrix) {
  acutPrintf(L"\nZeichnung transformieren:");
  int count = 0;
  {
    AcDbConnector connector;
    AcDbBlockTableRecord* modelSpace = connector.ModelSpace();
    AcDbBlockTableRecordIterator* raw = nullptr;
    if (modelSpace != nullptr && modelSpace->newIterator(raw, true, true) == Acad::eOk && raw != nullptr) {
      std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
      for (it->start(true, true); !it->done(); it->step(true, true)) {
        AcDbEntity* entity = nullptr;
        if (it->getEntity(entity, AcDb::kForWrite, false) != Acad::eOk || entity == nullptr) continue;
        if (!AcDbIsFrozenOrInInvisibleLayer(entity)) {
          ++count;
          // A type that cannot follow the matrix stays as it is; it was meant to move, so it counts.
          entity->transformBy(matrix);
        }
        entity->close();
      }
    }
    acutPrintf(L"\n%d Zeichenelemente transformiert\n", count);
  }
  return count;
}
