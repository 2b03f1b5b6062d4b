// Undo and take-back through the host's objects: what a command appended is gone again and its ids name
// nothing, what it erased is back, what it changed reads as before, and the drawing saves byte for byte
// as it was.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "host/db/Undo.h"
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"
#include "tests/support/ReadFile.h"

#include <cmath>
#include <fstream>
#include <sstream>

namespace {

struct Made {
  AcDbObjectId layer, point, erased, recoloured;
};

// What a capture command does to a drawing, and a little more: a layer and a point on it, an entity
// erased, another one recoloured and moved.
Made changeTheDrawing(AcDbDatabase* db) {
  Made made;
  const std::vector<AcDbObjectId> ids = modelSpaceIds(db);
  made.erased = ids.front();
  made.recoloured = ids.back();
  AcDbLayerTable* layers = nullptr;
  EXPECT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* record = new AcDbLayerTableRecord;
  record->setName(L"Vermessung");
  EXPECT_EQ(layers->add(made.layer, record), Acad::eOk);
  record->close();
  layers->close();

  AcDbBlockTable* blocks = nullptr;
  EXPECT_EQ(db->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
  blocks->close();
  auto* point = new AcDbPoint(AcGePoint3d(2561234.5, 5634012.25, 250.0));
  point->setLayer(L"Vermessung");
  EXPECT_EQ(model->appendAcDbEntity(made.point, point), Acad::eOk);
  point->close();
  model->close();

  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entity, made.erased, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(entity->erase(), Acad::eOk);
  entity->close();
  EXPECT_EQ(acdbOpenAcDbEntity(entity, made.recoloured, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(entity->setColorIndex(5), Acad::eOk);
  AcGeMatrix3d shift;
  shift.entry[0][3] = 100.0;
  EXPECT_EQ(entity->transformBy(shift), Acad::eOk);
  entity->close();
  return made;
}

TEST_F(DrawingTest, UndoTakesBackAppendedErasedAndChangedObjectsWithTheirIds) {
  for (const char* version : {"R12", "R2000"}) {
    SCOPED_TRACE(version);
    openSample(version);
    const std::string untouched = readFile(save(std::string("untouched-") + version + ".dxf"));
    const std::vector<AcDbObjectId> before = modelSpaceIds(db());

    host::beginCommandChanges("_Build");
    const Made made = changeTheDrawing(db());
    const host::CommandOutcome outcome = host::endCommandChanges();
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.unchangedReport, "");
    ASSERT_NE(readFile(save(std::string("changed-") + version + ".dxf")), untouched);

    std::string undone;
    ASSERT_TRUE(host::undoLastCommand(undone));
    EXPECT_EQ(undone, "_Build");
    EXPECT_FALSE(made.point.isValid());
    EXPECT_FALSE(made.layer.isValid());
    EXPECT_TRUE(layerId(db(), L"Vermessung").isNull());
    EXPECT_EQ(modelSpaceIds(db()), before);
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(entity, made.erased, AcDb::kForRead), Acad::eOk);
    entity->close();
    ASSERT_EQ(acdbOpenAcDbEntity(entity, made.recoloured, AcDb::kForRead), Acad::eOk);
    EXPECT_NE(entity->colorIndex(), 5);
    entity->close();
    EXPECT_EQ(readFile(save(std::string("undone-") + version + ".dxf")), untouched);
    EXPECT_FALSE(host::undoLastCommand(undone));

    // The same work under a failure: taken back when the command ends, nothing left to undo.
    host::beginCommandChanges("_Build");
    changeTheDrawing(db());
    host::noteCommandFailure("out of memory");
    EXPECT_EQ(host::endCommandChanges().failure, "out of memory");
    EXPECT_EQ(readFile(save(std::string("taken-back-") + version + ".dxf")), untouched);
    EXPECT_EQ(modelSpaceIds(db()), before);
    EXPECT_FALSE(host::undoLastCommand(undone));
  }
}

}  // namespace

namespace {

TEST_F(DrawingTest, NoCoordinateThatIsNotFiniteReachesTheDrawing) {
  openSample();
  const std::string untouched = readFile(save("untouched.dxf"));
  const double nan = std::nan(""), inf = HUGE_VAL;

  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db()->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
  blocks->close();
  auto* point = new AcDbPoint(AcGePoint3d(1.0, nan, 0.0));
  EXPECT_EQ(model->appendAcDbEntity(point), Acad::eInvalidInput);
  delete point;
  model->close();

  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(entity, firstOnLayer(db(), L"Survey"), AcDb::kForWrite), Acad::eOk);
  auto* surveyPoint = dynamic_cast<AcDbPoint*>(entity);
  ASSERT_NE(surveyPoint, nullptr);
  EXPECT_EQ(surveyPoint->setPosition(AcGePoint3d(inf, 0.0, 0.0)), Acad::eInvalidInput);
  entity->close();
  EXPECT_EQ(readFile(save("after.dxf")), untouched);
}

}  // namespace
