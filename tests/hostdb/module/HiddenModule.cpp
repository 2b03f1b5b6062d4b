// Built like the real module: hidden visibility, linked only against the host library. It links only if
// the database interface is exported, and its dynamic_cast works only if the entity classes' type
// information is shared across the library boundary.
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbHostApplicationServices.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"

// Counts the points of model space through dynamic_cast, which needs the host's type information.
extern "C" __attribute__((visibility("default"))) int hiddenModuleCountPoints() {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) return -1;
  AcDbBlockTable* table = nullptr;
  if (db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return -2;
  AcDbBlockTableRecord* model = nullptr;
  Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead);
  table->close();
  if (es != Acad::eOk) return -3;
  AcDbBlockTableRecordIterator* it = nullptr;
  model->newIterator(it);
  int points = 0;
  for (; !it->done(); it->step()) {
    AcDbEntity* entity = nullptr;
    if (it->getEntity(entity, AcDb::kForRead) != Acad::eOk) continue;
    if (dynamic_cast<AcDbPoint*>(entity) != nullptr) ++points;
    entity->close();
  }
  delete it;
  model->close();
  return points;
}
