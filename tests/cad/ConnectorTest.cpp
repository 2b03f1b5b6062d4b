// The connector against the real host: what the user is told on each failure (alert or command line),
// and that it never leaves model space open or a new entity behind.
#include "cad/AcDbConnector.h"
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"
#include "tests/hostdb/DrawingFixture.h"
#include "tests/hostdb/ModelSpace.h"
#include "tests/hostrt/HostTestSupport.h"

namespace {

using hosttest::TranscriptCapture;

class ConnectorTest : public DrawingTest {
 protected:
  // True when nobody holds model space open: the connector let go of it.
  bool modelSpaceFree() {
    AcDbBlockTable* table = nullptr;
    if (db()->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return false;
    AcDbBlockTableRecord* model = nullptr;
    Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
    table->close();
    if (es == Acad::eOk) model->close();
    return es == Acad::eOk;
  }
};

TEST_F(ConnectorTest, WithoutADrawingTheUserIsAlertedAndAppendsAreRefused) {
  TranscriptCapture transcript;
  AcDbConnector connector;
  EXPECT_FALSE(connector.IsConnected());
  EXPECT_EQ(connector.Database(), nullptr);
  AcDbObjectId layer = AcDbObjectId().setFromOldId(77);
  connector.GetCurrentLayer(layer);
  EXPECT_TRUE(layer.isNull());

  // Never connected: refused with an alert; with the close flag the new entity is freed (a leak would
  // show under the address sanitizer), without it the caller still owns it.
  AcDbObjectId id = AcDbObjectId().setFromOldId(77);
  EXPECT_FALSE(connector.AppendToModelSpace(new AcDbPoint(AcGePoint3d(1, 2, 3)), id, true));
  EXPECT_TRUE(id.isNull());
  auto* kept = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
  EXPECT_FALSE(AcDbConnector(false).AppendToModelSpace(kept, false));
  EXPECT_TRUE(kept->isNewObject());
  kept->close();

  EXPECT_EQ(transcript.text(),
            "[alert] \"No database!\"\n"
            "[alert] \"AcDbConnector not connected!\"\n"
            "[alert] \"AcDbConnector not connected!\"\n");
}

TEST_F(ConnectorTest, ABusyBlockTableIsAlertedButABusyModelSpaceOnlyPrinted) {
  openSample();
  TranscriptCapture transcript;
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(db()->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
  AcDbConnector blockedTable;
  EXPECT_FALSE(blockedTable.IsConnected());
  EXPECT_EQ(blockedTable.Database(), nullptr) << "a failed connect forgets the database";
  EXPECT_EQ(transcript.text(), "[alert] \"Failed to get block table!\"\n");
  transcript.clear();

  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead), Acad::eOk);
  table->close();
  AcDbConnector blockedModel;
  EXPECT_FALSE(blockedModel.IsConnected());
  EXPECT_EQ(blockedModel.Database(), nullptr);
  EXPECT_EQ(blockedModel.ModelSpace(), nullptr);
  EXPECT_EQ(transcript.text(), "Failed to get block table record!");
  model->close();

  EXPECT_TRUE(blockedModel.Reconnect());
  EXPECT_EQ(blockedModel.Database(), db());
  EXPECT_TRUE(blockedModel.ModelSpace()->isWriteEnabled());
  EXPECT_TRUE(blockedModel.Connect()) << "connecting again keeps the open model space";
  blockedModel.Disconnect();
  EXPECT_TRUE(modelSpaceFree());
}

TEST_F(ConnectorTest, AppendsToModelSpaceAndClosesItWhenGone) {
  openSample();
  TranscriptCapture transcript;
  AcDbObjectId lineId;
  {
    AcDbConnector connector;
    ASSERT_TRUE(connector.IsConnected());
    AcDbObjectId current;
    connector.GetCurrentLayer(current);
    EXPECT_EQ(current, layerId(db(), L"Survey"));

    auto* line = new AcDbLine(AcGePoint3d(2561200, 5634000, 100), AcGePoint3d(2561210, 5634010, 101));
    ASSERT_TRUE(connector.AppendToModelSpace(line, lineId, false));
    EXPECT_FALSE(lineId.isNull());
    EXPECT_TRUE(line->isWriteEnabled()) << "left open as asked";
    line->close();

    // An entity the drawing has already cannot be appended again; kept open, it is not erased.
    AcDbEntity* again = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(again, lineId, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId failedId = lineId;
    EXPECT_FALSE(connector.AppendToModelSpace(again, failedId, false));
    EXPECT_TRUE(failedId.isNull());
    EXPECT_FALSE(again->isErased());
    again->close();
    EXPECT_FALSE(modelSpaceFree());
  }
  EXPECT_TRUE(modelSpaceFree());
  EXPECT_EQ(transcript.text(), "[alert] \"AcDbConnector::AppendToModelSpace()\\nFailed to append entity!\"\n");

  std::vector<AcDbObjectId> ids = modelSpaceIds(db());
  EXPECT_EQ(ids.back(), lineId);
  EXPECT_EQ(firstOnLayer(db(), L"Survey"), ids[0]) << "the sample's point is still first";
}

}  // namespace
