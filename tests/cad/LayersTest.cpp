// Layer helpers on real drawings: which layers hide entities, making layers usable, the module's own
// layers as an independent reader (ezdxf) sees them after saving, and the name lists.
#include "cad/AcDbDebugLog.h"
#include "cad/AcDbLayers.h"
#include "host/db/Drawing.h"
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDebug.h"
#include "support/KoLog.h"
#include "tests/hostdb/DrawingFixture.h"
#include "tests/hostdb/ModelSpace.h"
#include "tests/hostrt/HostTestSupport.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

using hosttest::TranscriptCapture;
using ::testing::ElementsAre;

class LayersTest : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    previousSink_ = AcDbSetDebugLogSink([this](int level, std::string_view line) {
      EXPECT_EQ(level, kAcDbDebugLogLevel);
      log_.emplace_back(line);
    });
  }
  void TearDown() override {
    AcDbSetDebugLogSink(std::move(previousSink_));
    DrawingTest::TearDown();
  }

  bool hides(AcDbObjectId entityId) {
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(entity, entityId, AcDb::kForRead), Acad::eOk);
    bool result = AcDbIsFrozenOrInInvisibleLayer(entity);
    entity->close();
    return result;
  }

  AcDbObject* openLayer(const ACHAR* name, AcDb::OpenMode mode) {
    AcDbObject* layer = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(layer, layerId(db(), name), mode), Acad::eOk);
    return layer;
  }

  std::vector<std::string> log_;
  AcDbDebugLogSink previousSink_;
};

TEST_F(LayersTest, FrozenOffAndLockedLayersHideTheirEntities) {
  openSample();
  EXPECT_TRUE(hides(firstOnLayer(db(), L"Frozen")));
  EXPECT_TRUE(hides(firstOnLayer(db(), L"Off")));
  // Locked but thawed and on: visible on screen, yet counted as hiding, so that commands skip it.
  EXPECT_TRUE(hides(firstOnLayer(db(), L"Locked")));
  EXPECT_FALSE(hides(firstOnLayer(db(), L"Survey")));
  EXPECT_TRUE(log_.empty());

  // An entity without a layer of the drawing, and a layer nobody can read right now: not hidden, logged.
  AcDbPoint loose;
  EXPECT_FALSE(AcDbIsFrozenOrInInvisibleLayer(&loose));
  AcDbObject* busy = openLayer(L"Frozen", AcDb::kForWrite);
  EXPECT_FALSE(hides(firstOnLayer(db(), L"Frozen")));
  busy->close();
  EXPECT_THAT(log_, ElementsAre("AcDbIsFrozenOrInInvisibleLayer: LayerId NULL",
                                "AcDbIsFrozenOrInInvisibleLayer: acdbOpenAcDbObject failed"));

  // Without a sink of its own the line goes to the log, and from there to the host's debugger channel that
  // the module plugs in (shown with tracing on).
  AcDbDebugLogSink own = AcDbSetDebugLogSink(nullptr);
  const KoDebugOutput previous = KoSetDebugOutput(&OutputDebugStringA);
  host::setTraceEnabled(true);
  ::testing::internal::CaptureStderr();
  AcDbIsFrozenOrInInvisibleLayer(&loose);
  std::string traced = ::testing::internal::GetCapturedStderr();
  host::setTraceEnabled(false);
  KoSetDebugOutput(previous);
  AcDbSetDebugLogSink(std::move(own));
  EXPECT_EQ(traced, "[trace] AcDbIsFrozenOrInInvisibleLayer: LayerId NULL\n");
}

TEST_F(LayersTest, EnableMakesEveryHidingLayerUsableAndReportsABusyLayer) {
  openSample();
  TranscriptCapture transcript;
  for (const ACHAR* name : {L"Frozen", L"Off", L"Locked", L"Survey"}) {
    EXPECT_EQ(AcDbEnableAndSetLayerVisible(layerId(db(), name)), Acad::eOk) << name;
    EXPECT_FALSE(hides(firstOnLayer(db(), name)));
  }
  EXPECT_EQ(transcript.text(), "");

  AcDbObject* busy = openLayer(L"Survey", AcDb::kForRead);
  EXPECT_EQ(AcDbEnableAndSetLayerVisible(layerId(db(), L"Survey")), Acad::eWasOpenForRead);
  busy->close();
  EXPECT_EQ(AcDbEnableAndSetLayerVisible(AcDbObjectId()), Acad::eNullObjectId);
  EXPECT_EQ(transcript.text(),
            "AutoCAD ERROR: 82 - Acad::eWasOpenForRead : AcDbEnableAndSetLayerVisible\n"
            "AutoCAD ERROR: 16 - Acad::eNullObjectId : AcDbEnableAndSetLayerVisible\n");
}

TEST_F(LayersTest, GetOrCreateFindsCreatesOnceAndIgnoresAnEmptyName) {
  openSample();
  TranscriptCapture transcript;
  AcCmColor red;
  red.setColorIndex(1);
  AcDbObjectId id = AcDbObjectId().setFromOldId(77);

  // An empty name must not even open the layer table (held open here, so an attempt would be reported).
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(db()->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  EXPECT_TRUE(AcDbGetOrCreateLayer(id, db(), L"", L"CONTINUOUS", red).isNull());
  EXPECT_TRUE(id.isNull());
  table->close();

  EXPECT_EQ(AcDbGetOrCreateLayer(id, db(), L"survey", L"CONTINUOUS", red), layerId(db(), L"Survey"));
  EXPECT_EQ(transcript.text(), "") << "an existing layer is found quietly";

  AcDbObjectId created = AcDbGetOrCreateLayer(id, db(), L"Passpunkte", L"", red);
  EXPECT_FALSE(created.isNull());
  EXPECT_EQ(id, created);
  EXPECT_EQ(AcDbGetOrCreateLayer(id, db(), L"Passpunkte", L"", red), created);
  EXPECT_EQ(transcript.text(), "TRELLANOVA: Create Layer: Passpunkte\n");

  // A name the table refuses: announced, reported, no layer and nothing left behind.
  transcript.clear();
  EXPECT_TRUE(AcDbGetOrCreateLayer(id, db(), L"a<b", L"", red).isNull());
  EXPECT_EQ(transcript.text(),
            "TRELLANOVA: Create Layer: a<b\n"
            "AutoCAD ERROR: 3 - Acad::eInvalidInput : a<b\n");
}

// The module's layers in sample drawings and in R12 drawings without the CONTINUOUS linetype: R12 writers
// often leave the linetype table empty, or write no tables at all; CAD programs still offer CONTINUOUS, and
// the module's layers ask for it by name.
TEST_F(LayersTest, ModuleLayersAreSavedWithTheirLinetypeAndColour) {
  const std::string entities = "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0.0\n20\n0.0\n30\n0.0\n11\n1.0\n21\n1.0\n"
                               "31\n0.0\n0\nENDSEC\n0\nEOF\n";
  const std::string emptyLinetypes = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n"
                                     "0\nTABLE\n2\nLTYPE\n70\n0\n0\nENDTAB\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\n0\n70\n0\n"
                                     "62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n" + entities;
  const std::string sampleLayers = "['0', 'Frozen', 'Locked', 'Off', 'Survey', 'TRELLANOVA_10', 'TRELLANOVA_KoVira']";
  const std::string ownLayers = "['0', 'TRELLANOVA_10', 'TRELLANOVA_KoVira']";
  struct Case {
    std::string name, text, drawing;  // text empty: the sample drawing in that version
  };
  for (const Case& c : {Case{"R12", "", "AC1009 True 7 " + sampleLayers}, {"R2018", "", "AC1032 True 7 " + sampleLayers},
                        {"empty-linetypes", emptyLinetypes, "AC1009 True 1 " + ownLayers},
                        {"entities-only", entities, "AC1009 True 1 " + ownLayers}}) {
    SCOPED_TRACE(c.name);
    if (c.text.empty()) {
      openSample(c.name);
    } else {
      const std::string path = (dir_ / (c.name + ".dxf")).string();
      std::ofstream(path, std::ios::binary) << c.text;
      std::string error;
      ASSERT_TRUE(host::openDrawing(path, error)) << error;
    }
    TranscriptCapture transcript;
    AcDbObjectId tool, suite;
    // The tool layer through the working drawing's temporary connector, the suite layer in a given one.
    ASSERT_FALSE(AcDbGetToolLayer(tool).isNull());
    ASSERT_FALSE(AcDbGetSuiteLayer(suite, db()).isNull());
    EXPECT_EQ(AcDbGetToolLayer(tool, db()), tool);
    EXPECT_EQ(AcDbGetSuiteLayer(suite), suite);
    EXPECT_EQ(transcript.text(),
              "TRELLANOVA: Create Layer: TRELLANOVA_KoVira\n"
              "TRELLANOVA: Create Layer: TRELLANOVA_10\n");

    const std::string saved = save("module-layers-" + c.name + ".dxf");
    expectAuditClean(saved);
    EXPECT_EQ(python(R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
for name in ("TRELLANOVA_KoVira", "TRELLANOVA_10"):
    layer = doc.layers.get(name)
    print(name, layer.dxf.color, layer.dxf.linetype.upper(), layer.dxf.flags)
# (ezdxf adds a Defpoints layer of its own as it reads.)
print(doc.dxfversion, "CONTINUOUS" in doc.linetypes, len(doc.modelspace()),
      sorted(l.dxf.name for l in doc.layers if l.dxf.name != "Defpoints"))
)",
                     "'" + saved + "'"),
              "TRELLANOVA_KoVira 6 CONTINUOUS 0\nTRELLANOVA_10 6 CONTINUOUS 0\n" + c.drawing + "\n");
    host::closeDrawing();
  }
}

TEST_F(LayersTest, NamesAndCurrentLayerOfTheWorkingDrawing) {
  std::vector<std::wstring> names{L"kept"};
  EXPECT_EQ(AcDbGetLayerNames(names), 1) << "no drawing: nothing added";
  EXPECT_STREQ(AcDbGetCurrentLayerName(), L"");

  std::string path = (dir_ / "blocks.dxf").string();
  python(R"(
import sys, ezdxf
doc = ezdxf.new("R2000")
doc.layers.add("Survey")
doc.header["$CLAYER"] = "Survey"
doc.blocks.new("Marker").add_circle((0, 0), 1)
doc.blocks.new("Pfeil")
doc.layouts.new("Plan 2")
doc.saveas(sys.argv[1])
)",
         "'" + path + "'");
  std::string error;
  ASSERT_TRUE(host::openDrawing(path, error)) << error;
  EXPECT_STREQ(AcDbGetCurrentLayerName(), L"Survey");

  int count = AcDbGetLayerNames(names);
  EXPECT_EQ(count, static_cast<int>(names.size()));
  EXPECT_THAT(names, ElementsAre(L"kept", L"0", L"Defpoints", L"Survey"));

  TranscriptCapture transcript;
  std::vector<std::wstring> blocks;
  EXPECT_EQ(AcDbGetBlockNames(blocks), 2);
  EXPECT_THAT(blocks, ElementsAre(L"Marker", L"Pfeil")) << "layouts are not blocks to insert";
  EXPECT_EQ(transcript.text(), "");
}

}  // namespace
