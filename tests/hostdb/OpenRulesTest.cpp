// The open/close discipline modules rely on: shared reads, one writer, erased objects hidden, and no
// change through an object that is only open for reading.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"

TEST_F(DrawingTest, ReadsShareOneObjectAndExcludeWriters) {
  openSample();
  AcDbObjectId id = firstOnLayer(db(), L"Survey");
  ASSERT_FALSE(id.isNull());

  AcDbEntity* first = nullptr;
  AcDbEntity* second = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(first, id, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenAcDbEntity(second, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(first, second);
  AcDbEntity* writer = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
  EXPECT_EQ(writer, nullptr);
  EXPECT_EQ(first->upgradeOpen(), Acad::eHadMultipleReaders);

  // A change through a read-only open is refused and leaves the entity as it was.
  auto* point = dynamic_cast<AcDbPoint*>(first);
  ASSERT_NE(point, nullptr);
  EXPECT_EQ(point->setPosition({1, 2, 3}), Acad::eNotOpenForWrite);
  EXPECT_EQ(point->transformBy(AcGeMatrix3d()), Acad::eNotOpenForWrite);
  EXPECT_EQ(point->erase(), Acad::eNotOpenForWrite);
  EXPECT_EQ(point->position(), AcGePoint3d(2561234.567, 5634012.345, 101.5));

  // Each read needs its own close; then the single remaining reader may upgrade.
  EXPECT_EQ(second->close(), Acad::eOk);
  EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
  EXPECT_TRUE(first->isWriteEnabled());
  AcDbObject* other = nullptr;
  EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eWasOpenForWrite);
  EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
  EXPECT_EQ(first->close(), Acad::eOk);

  // Closed for good: a write open now succeeds and hands out a fresh object.
  ASSERT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_TRUE(other->isWriteEnabled());
  other->close();
}

TEST_F(DrawingTest, OpeningRefusesBadIdsWrongKindsAndErasedObjects) {
  openSample();
  AcDbObject* object = reinterpret_cast<AcDbObject*>(1);
  EXPECT_EQ(acdbOpenAcDbObject(object, AcDbObjectId::kNull, AcDb::kForRead), Acad::eNullObjectId);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(acdbOpenAcDbObject(object, AcDbObjectId().setFromOldId(1 << 30), AcDb::kForRead),
            Acad::eUnknownHandle);

  // A layer is no entity; the refused open must not leave the layer open.
  AcDbObjectId survey = layerId(db(), L"Survey");
  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entity, survey, AcDb::kForWrite), Acad::eNotAnEntity);
  AcDbLayerTableRecord* layer = nullptr;
  EXPECT_EQ(acdbOpenObject(layer, survey, AcDb::kForWrite), Acad::eOk);
  layer->close();
  AcDbPoint* notAPoint = nullptr;
  EXPECT_EQ(acdbOpenObject(notAPoint, survey, AcDb::kForRead), Acad::eNotThatKindOfClass);
  EXPECT_EQ(acdbOpenObject(layer, survey, AcDb::kForWrite), Acad::eOk);
  layer->close();

  AcDbObjectId id = firstOnLayer(db(), L"Locked");
  ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(entity->erase(), Acad::eOk);
  EXPECT_TRUE(entity->isErased());
  EXPECT_EQ(entity->erase(), Acad::eWasErased);
  entity->close();
  EXPECT_TRUE(id.isErased());
  EXPECT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead), Acad::eWasErased);
  ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead, true), Acad::eOk);
  entity->close();
}

TEST_F(DrawingTest, NewObjectsAreFreedByCloseUntilTheyJoinTheDrawing) {
  openSample();
  // What a module does when appending failed: erase (refused, the entity is no part of a drawing) and
  // close, which frees it. The sanitizer run catches a leak or a double free here.
  auto* point = new AcDbPoint({1, 2, 3});
  EXPECT_TRUE(point->isNewObject());
  EXPECT_TRUE(point->objectId().isNull());
  EXPECT_EQ(point->erase(), Acad::eNotInDatabase);
  EXPECT_EQ(point->close(), Acad::eOk);

  auto* layer = new AcDbLayerTableRecord;
  EXPECT_EQ(layer->setName(L"Bad:Name"), Acad::eInvalidInput);
  EXPECT_EQ(layer->setName(L""), Acad::eInvalidInput);
  EXPECT_EQ(layer->setName(L"Good"), Acad::eOk);
  delete layer;
}

// Objects are kept after closing and handed out again: each open must still get an object of the
// record's own class that answers for that record.
TEST_F(DrawingTest, ObjectsOpenedAgainAnswerForTheirOwnRecord) {
  openSample();
  const std::vector<AcDbObjectId> ids = modelSpaceIds(db());
  for (AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite, AcDb::kForRead}) {
    std::vector<AcDbEntity*> open;
    for (AcDbObjectId id : ids) {
      AcDbEntity* entity = nullptr;
      ASSERT_EQ(acdbOpenAcDbEntity(entity, id, mode), Acad::eOk);
      EXPECT_EQ(entity->objectId(), id);
      EXPECT_EQ(entity->isWriteEnabled(), mode == AcDb::kForWrite);
      open.push_back(entity);
    }
    EXPECT_NE(dynamic_cast<AcDbPoint*>(open[0]), nullptr);
    EXPECT_NE(dynamic_cast<AcDbLine*>(open[1]), nullptr);
    EXPECT_EQ(dynamic_cast<AcDbLine*>(open[4]), nullptr);  // the circle
    for (AcDbEntity* entity : open) EXPECT_EQ(entity->close(), Acad::eOk);
  }
}
