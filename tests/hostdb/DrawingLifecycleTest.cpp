// Opening, saving and closing the working drawing: failures change nothing, and objects left open when
// a drawing goes away are harmless.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"
#include "tests/support/ReadFile.h"

#include <fstream>
#include <sstream>

TEST_F(DrawingTest, FailedOpenKeepsTheDrawingOpenBefore) {
  openSample();
  AcDbDatabase* before = db();
  std::string path = host::drawingPath();
  AcDbObjectId id = firstOnLayer(db(), L"Survey");

  std::ofstream(dir_ / "garbage.dxf") << "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n";
  std::ofstream(dir_ / "empty.dxf");
  for (const char* name : {"garbage.dxf", "empty.dxf", "missing.dxf"}) {
    std::string error;
    EXPECT_FALSE(host::openDrawing((dir_ / name).string(), error)) << name;
    EXPECT_FALSE(error.empty()) << name;
    EXPECT_EQ(db(), before);
    EXPECT_EQ(host::drawingPath(), path);
    EXPECT_TRUE(id.isValid());
  }
  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead), Acad::eOk);
  entity->close();
}

TEST_F(DrawingTest, ClosingTheDrawingDetachesObjectsStillOpen) {
  openSample();
  AcDbObjectId id = firstOnLayer(db(), L"Survey");
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(db()->getBlockTable(table), Acad::eOk);

  host::closeDrawing();
  EXPECT_FALSE(host::hasDrawing());
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
  EXPECT_FALSE(id.isValid());
  AcDbEntity* again = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(again, id, AcDb::kForRead), Acad::eUnknownHandle);
  EXPECT_EQ(host::currentLayerName(), L"");

  // The detached objects answer without touching the gone drawing, and close frees them.
  EXPECT_FALSE(table->has(ACDB_MODEL_SPACE));
  EXPECT_EQ(table->close(), Acad::eOk);
  EXPECT_TRUE(entity->objectId().isNull());
  EXPECT_EQ(entity->transformBy(AcGeMatrix3d()), Acad::eNoDatabase);
  EXPECT_EQ(entity->setLayer(L"0"), Acad::eNoDatabase);
  EXPECT_EQ(entity->highlight(), Acad::eNoDatabase);
  EXPECT_EQ(entity->close(), Acad::eOk);

  openSample();  // ids are never reused: the old id names nothing in the new drawing either
  EXPECT_EQ(acdbOpenAcDbEntity(again, id, AcDb::kForRead), Acad::eUnknownHandle);
  host::closeDrawing();
  std::string error;
  EXPECT_FALSE(host::saveDrawing((dir_ / "none.dxf").string(), error));
  EXPECT_FALSE(error.empty());
  EXPECT_FALSE(std::filesystem::exists(dir_ / "none.dxf"));
}

TEST_F(DrawingTest, SavingIsAtomicAndDefaultsToTheOpenedFile) {
  openSample();
  std::string path = host::drawingPath();
  std::string original = readFile(path);
  std::string error;

  EXPECT_FALSE(host::saveDrawing((dir_ / "no" / "such" / "folder.dxf").string(), error));
  EXPECT_FALSE(error.empty());

  // Unchanged drawing: written back byte for byte.
  ASSERT_TRUE(host::saveDrawing("", error)) << error;
  EXPECT_EQ(readFile(path), original);

  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(entity, firstOnLayer(db(), L"Survey"), AcDb::kForWrite), Acad::eOk);
  AcGeMatrix3d shift;
  shift.entry[0][3] = 0.001;
  ASSERT_EQ(entity->transformBy(shift), Acad::eOk);
  entity->close();
  ASSERT_TRUE(host::saveDrawing("", error)) << error;
  EXPECT_NE(readFile(path), original);
}
