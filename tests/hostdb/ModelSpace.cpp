#include "ModelSpace.h"

#include "sdk/AcDbOpen.h"

#include <gtest/gtest.h>

#include <memory>

std::vector<AcDbObjectId> modelSpaceIds(AcDbDatabase* db, bool skipDeleted) {
  std::vector<AcDbObjectId> ids;
  AcDbBlockTable* table = nullptr;
  EXPECT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead), Acad::eOk);
  table->close();
  AcDbBlockTableRecordIterator* it = nullptr;
  EXPECT_EQ(model->newIterator(it, true, skipDeleted), Acad::eOk);
  for (; !it->done(); it->step(true, skipDeleted)) {
    AcDbObjectId id;
    EXPECT_EQ(it->getEntityId(id), Acad::eOk);
    ids.push_back(id);
  }
  delete it;
  model->close();
  return ids;
}

AcDbObjectId firstOnLayer(AcDbDatabase* db, const std::wstring& layer) {
  for (AcDbObjectId id : modelSpaceIds(db)) {
    AcDbEntity* e = nullptr;
    if (acdbOpenAcDbEntity(e, id, AcDb::kForRead) != Acad::eOk) continue;
    std::unique_ptr<ACHAR[]> name(e->layer());
    e->close();
    if (layer == name.get()) return id;
  }
  return {};
}

AcDbObjectId layerId(AcDbDatabase* db, const ACHAR* name) {
  AcDbLayerTable* layers = nullptr;
  EXPECT_EQ(db->getLayerTable(layers, AcDb::kForRead), Acad::eOk);
  AcDbObjectId id;
  layers->getAt(name, id);
  layers->close();
  return id;
}
