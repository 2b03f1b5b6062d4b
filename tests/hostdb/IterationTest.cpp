// Walking model space and the tables, as the transformation and the layer list do.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"

namespace {

std::vector<std::wstring> layerNames(AcDbDatabase* db) {
  std::vector<std::wstring> names;
  AcDbLayerTable* table = nullptr;
  EXPECT_EQ(db->getLayerTable(table, AcDb::kForRead), Acad::eOk);
  AcDbLayerTableIterator* it = nullptr;
  EXPECT_EQ(table->newIterator(it), Acad::eOk);
  for (it->start(); !it->done(); it->step()) {
    AcDbLayerTableRecord* record = nullptr;
    EXPECT_EQ(it->getRecord(record, AcDb::kForRead), Acad::eOk);
    const ACHAR* name = nullptr;
    record->getName(name);
    names.push_back(name);
    record->close();
  }
  delete it;
  table->close();
  return names;
}

}  // namespace

TEST_F(DrawingTest, ModelSpaceYieldsItsEntitiesInOrderAndSkipsErasedOnes) {
  for (const char* version : {"R12", "R2000", "R2018"}) {
    SCOPED_TRACE(version);
    openSample(version);
    std::vector<AcDbObjectId> ids = modelSpaceIds(db());
    // Point, three lines, circle, polyline, text; the paper space line is not model space.
    ASSERT_EQ(ids.size(), 7u);

    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(entity, ids[0], AcDb::kForRead), Acad::eOk);
    auto* point = dynamic_cast<AcDbPoint*>(entity);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->position(), AcGePoint3d(2561234.567, 5634012.345, 101.5));
    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(db()->getBlockTable(blocks), Acad::eOk);
    AcDbObjectId modelId;
    EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, modelId), Acad::eOk);
    blocks->close();
    EXPECT_EQ(point->ownerId(), modelId);
    point->close();
    ASSERT_EQ(acdbOpenAcDbEntity(entity, ids[1], AcDb::kForRead), Acad::eOk);
    auto* line = dynamic_cast<AcDbLine*>(entity);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->endPoint(), AcGePoint3d(10, 0, 0));
    line->close();

    // Erase the second line: skipped by default, still there when erased entities are asked for.
    ASSERT_EQ(acdbOpenAcDbEntity(entity, ids[2], AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(entity->erase(), Acad::eOk);
    entity->close();
    std::vector<AcDbObjectId> remaining = modelSpaceIds(db());
    EXPECT_EQ(remaining.size(), 6u);
    EXPECT_EQ(std::find(remaining.begin(), remaining.end(), ids[2]), remaining.end());
    EXPECT_EQ(modelSpaceIds(db(), false), ids);

    // Walking backwards from the end meets the same entities in reverse.
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(db()->getBlockTable(table), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(table->getAt(L"*MODEL_SPACE", model, AcDb::kForRead), Acad::eOk);  // any case
    table->close();
    AcDbBlockTableRecordIterator* it = nullptr;
    ASSERT_EQ(model->newIterator(it, false), Acad::eOk);
    std::vector<AcDbObjectId> backwards;
    for (; !it->done(); it->step(false)) {
      AcDbObjectId id;
      it->getEntityId(id);
      backwards.push_back(id);
    }
    AcDbObjectId none;
    EXPECT_EQ(it->getEntityId(none), Acad::eIteratorDone);
    EXPECT_EQ(it->getEntity(entity, AcDb::kForRead), Acad::eIteratorDone);
    delete it;
    model->close();
    EXPECT_EQ(std::vector<AcDbObjectId>(backwards.rbegin(), backwards.rend()), remaining);
  }
}

TEST_F(DrawingTest, TablesListTheirRecords) {
  openSample();
  std::vector<std::wstring> names = layerNames(db());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"0", L"Defpoints", L"Frozen", L"Off", L"Locked", L"Survey"}));

  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db()->getBlockTable(blocks), Acad::eOk);
  EXPECT_TRUE(blocks->has(ACDB_PAPER_SPACE));
  EXPECT_FALSE(blocks->has(L"NoSuchBlock"));
  AcDbBlockTableIterator* it = nullptr;
  ASSERT_EQ(blocks->newIterator(it), Acad::eOk);
  int layouts = 0;
  for (; !it->done(); it->step()) {
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(it->getRecord(record, AcDb::kForRead), Acad::eOk);
    layouts += record->isLayout();
    record->close();
  }
  delete it;
  blocks->close();
  EXPECT_EQ(layouts, 2);

  AcDbLinetypeTable* linetypes = nullptr;
  ASSERT_EQ(db()->getLinetypeTable(linetypes), Acad::eOk);
  AcDbObjectId continuous;
  EXPECT_EQ(linetypes->getAt(L"continuous", continuous), Acad::eOk);
  EXPECT_EQ(linetypes->getAt(L"NoSuchLinetype", continuous), Acad::eKeyNotFound);
  EXPECT_TRUE(continuous.isNull());
  linetypes->close();
}
