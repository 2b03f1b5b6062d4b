// Layer state as the transformation reads it (frozen, off, locked) and as the module sets it when it
// makes its own layers; checked against what ezdxf reads from the saved file.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "host/db/Undo.h"
#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"

#include <fstream>
#include <memory>

namespace {

struct Flags {
  bool frozen, off, locked;
  bool operator==(const Flags&) const = default;
};

Flags flagsOf(AcDbDatabase* db, const ACHAR* name) {
  AcDbLayerTableRecord* layer = nullptr;
  EXPECT_EQ(acdbOpenObject(layer, layerId(db, name), AcDb::kForRead), Acad::eOk);
  if (layer == nullptr) return {};
  Flags f{layer->isFrozen(), layer->isOff(), layer->isLocked()};
  layer->close();
  return f;
}

}  // namespace

TEST_F(DrawingTest, LayerFlagsAreReadWrittenAndSavedWithoutDisturbingColour) {
  openSample();
  EXPECT_EQ(flagsOf(db(), L"Frozen"), (Flags{true, false, false}));
  EXPECT_EQ(flagsOf(db(), L"Off"), (Flags{false, true, false}));
  EXPECT_EQ(flagsOf(db(), L"Locked"), (Flags{false, false, true}));
  EXPECT_EQ(flagsOf(db(), L"survey"), (Flags{false, false, false}));  // names ignore case

  // Make every hidden layer usable again, and hide the survey layer in all three ways at once.
  for (const ACHAR* name : {L"Frozen", L"Off", L"Locked"}) {
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, layerId(db(), name), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(layer->setIsFrozen(false), Acad::eOk);
    EXPECT_EQ(layer->setIsOff(false), Acad::eOk);
    EXPECT_EQ(layer->setIsLocked(false), Acad::eOk);
    layer->close();
  }
  AcDbLayerTableRecord* survey = nullptr;
  ASSERT_EQ(acdbOpenObject(survey, layerId(db(), L"Survey"), AcDb::kForWrite), Acad::eOk);
  survey->setIsFrozen(true);
  survey->setIsOff(true);
  survey->setIsLocked(true);
  survey->setVPDFLT(true);
  EXPECT_EQ(survey->color().colorIndex(), 3);  // off is a negative colour in the file; the index stays 3
  EXPECT_EQ(survey->setColor(AcCmColor()), Acad::eInvalidInput);
  survey->close();
  EXPECT_EQ(flagsOf(db(), L"Frozen"), (Flags{false, false, false}));
  EXPECT_EQ(flagsOf(db(), L"Survey"), (Flags{true, true, true}));

  std::string out = python(R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
for name in ("Frozen", "Off", "Locked", "Survey"):
    l = doc.layers.get(name)
    print(name, int(l.is_frozen()), int(l.is_off()), int(l.is_locked()), l.color, l.dxf.flags & 2)
)",
                           "'" + save("flags.dxf") + "'");
  EXPECT_EQ(out, "Frozen 0 0 0 7 0\nOff 0 0 0 7 0\nLocked 0 0 0 7 0\nSurvey 1 1 1 3 2\n");
}

TEST_F(DrawingTest, CurrentLayerIsTheHeadersAndRefusesFrozenLayers) {
  openSample();
  EXPECT_EQ(host::currentLayerName(), L"Survey");
  EXPECT_EQ(db()->clayer(), layerId(db(), L"Survey"));
  EXPECT_EQ(db()->setClayer(layerId(db(), L"Frozen")), Acad::eInvalidLayer);
  EXPECT_EQ(db()->setClayer(AcDbObjectId()), Acad::eInvalidInput);
  EXPECT_EQ(db()->setClayer(firstOnLayer(db(), L"Survey")), Acad::eInvalidInput);  // an entity, not a layer
  EXPECT_EQ(host::currentLayerName(), L"Survey");
  EXPECT_EQ(db()->setClayer(layerId(db(), L"Locked")), Acad::eOk);
  EXPECT_EQ(host::currentLayerName(), L"Locked");
}

// A new layer (its colour and linetype as the module sets them are checked with the module's layer helper),
// a point on it and a line on the current layer, in every format generation; ezdxf must read each result
// without audit errors.
TEST_F(DrawingTest, AddedLayersAndEntitiesSaveAsValidDrawings) {
  for (const char* version : {"R12", "R2000", "R2018"}) {
    SCOPED_TRACE(version);
    openSample(version);
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db()->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    ASSERT_FALSE(layers->has(L"TRELLANOVA_KoVira"));
    auto* record = new AcDbLayerTableRecord;
    record->setName(L"TRELLANOVA_KoVira");
    AcDbObjectId toolLayer;
    ASSERT_EQ(layers->add(toolLayer, record), Acad::eOk);
    EXPECT_FALSE(toolLayer.isNull());
    EXPECT_EQ(layers->add(record), Acad::eAlreadyInDb);
    record->close();

    auto* duplicate = new AcDbLayerTableRecord;
    duplicate->setName(L"trellanova_kovira");
    EXPECT_EQ(layers->add(duplicate), Acad::eDuplicateRecordName);
    duplicate->close();
    EXPECT_TRUE(layers->has(toolLayer));
    // A name outside ASCII: the code page of an R12 file, UTF-8 from R2007 on.
    auto* contours = new AcDbLayerTableRecord;
    contours->setName(L"Höhenlinien");
    ASSERT_EQ(layers->add(contours), Acad::eOk);
    contours->close();
    layers->close();

    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(db()->getBlockTable(blocks), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
    blocks->close();
    auto* point = new AcDbPoint({2561234.5678901, 5634012.3456789, 99.25});
    ASSERT_EQ(point->setLayer(toolLayer), Acad::eOk);
    EXPECT_EQ(point->setLayer(L"NoSuchLayer"), Acad::eKeyNotFound);
    AcDbObjectId pointId;
    ASSERT_EQ(model->appendAcDbEntity(pointId, point), Acad::eOk);
    EXPECT_EQ(point->objectId(), pointId);
    EXPECT_TRUE(point->isWriteEnabled());
    point->close();
    auto* line = new AcDbLine({1, 2, 3}, {4, 5, 6});
    line->setColorIndex(1);
    ASSERT_EQ(model->appendAcDbEntity(line), Acad::eOk);
    EXPECT_EQ(model->appendAcDbEntity(line), Acad::eAlreadyInDb);
    line->close();
    auto* spot = new AcDbPoint({7, 8, 9});
    ASSERT_EQ(spot->setLayer(L"HÖHENLINIEN"), Acad::eKeyNotFound);  // case folds for ASCII letters only
    ASSERT_EQ(spot->setLayer(L"höhenlinien"), Acad::eOk);
    ASSERT_EQ(model->appendAcDbEntity(spot), Acad::eOk);
    std::unique_ptr<ACHAR[]> spotLayer(spot->layer());
    EXPECT_STREQ(spotLayer.get(), L"Höhenlinien");
    spot->close();
    model->close();
    EXPECT_EQ(modelSpaceIds(db()).back(), modelSpaceIds(db(), false).back());
    EXPECT_EQ(modelSpaceIds(db()).size(), 10u);

    std::string path = save(std::string("added-") + version + ".dxf");
    expectAuditClean(path);
    std::string out = python(R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
msp = doc.modelspace()
p = msp.query("POINT")[-2]
print(p.dxf.layer, repr(tuple(p.dxf.location)))
ln = msp.query("LINE")[-1]
print(ln.dxf.layer, ln.dxf.color, tuple(ln.dxf.start), tuple(ln.dxf.end))
print(msp.query("POINT")[-1].dxf.layer, "Höhenlinien" in doc.layers)
handles = [e.dxf.handle for e in doc.entitydb.values()]
print(len(handles) == len(set(handles)))
)",
                             "'" + path + "'");
    EXPECT_EQ(out,
              "TRELLANOVA_KoVira (2561234.5678901, 5634012.3456789, 99.25)\n"
              "Survey 1 (1.0, 2.0, 3.0) (4.0, 5.0, 6.0)\n"
              "Höhenlinien True\n"
              "True\n");
  }
}

namespace {

AcDbObjectId entityLayer(AcDbObjectId entityId) {
  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entity, entityId, AcDb::kForRead), Acad::eOk);
  if (entity == nullptr) return {};
  const AcDbObjectId id = entity->layerId();
  entity->close();
  return id;
}

// What the transformation asks of each entity before it moves it: is its layer frozen, off or locked.
bool layerHides(AcDbObjectId entityId) {
  AcDbLayerTableRecord* layer = nullptr;
  EXPECT_EQ(acdbOpenObject(layer, entityLayer(entityId), AcDb::kForRead), Acad::eOk);
  if (layer == nullptr) return false;
  const bool hides = layer->isFrozen() || layer->isOff() || layer->isLocked();
  layer->close();
  return hides;
}

void setLocked(AcDbObjectId layerId, bool locked) {
  AcDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, layerId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(layer->setIsLocked(locked), Acad::eOk);
  layer->close();
}

}  // namespace

// The host remembers each layer's state and which layer a name means, for the many entities of a walk;
// what it remembers must follow a change by the module, an undo and a command taken back.
TEST_F(DrawingTest, LayerStateAndLayerNamesFollowChangesUndoAndTakeBack) {
  openSample();
  const AcDbObjectId point = firstOnLayer(db(), L"Survey"), survey = layerId(db(), L"Survey");
  EXPECT_FALSE(layerHides(point));
  host::beginCommandChanges("_Lock");
  setLocked(survey, true);
  EXPECT_TRUE(layerHides(point));
  host::endCommandChanges();
  EXPECT_TRUE(layerHides(point));
  std::string undone;
  ASSERT_TRUE(host::undoLastCommand(undone));
  EXPECT_FALSE(layerHides(point));
  host::beginCommandChanges("_Lock");
  setLocked(survey, true);
  EXPECT_TRUE(layerHides(point));
  host::noteCommandFailure("out of memory");
  host::endCommandChanges();
  EXPECT_FALSE(layerHides(point));

  // An entity on a layer the drawing lacks has none, until the layer is added (under another case).
  const std::filesystem::path ghost = dir_ / "ghost.dxf";
  std::ofstream(ghost) << "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\nGhost\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
                          " 11\n1.0\n 21\n1.0\n 31\n0.0\n  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  ASSERT_TRUE(host::openDrawing(ghost.string(), error)) << error;
  const AcDbObjectId line = modelSpaceIds(db()).at(0);
  EXPECT_TRUE(entityLayer(line).isNull());
  for (int round = 0; round < 2; ++round) {
    host::beginCommandChanges("_Layer");
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db()->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbLayerTableRecord;
    record->setName(L"GHOST");
    AcDbObjectId added;
    ASSERT_EQ(layers->add(added, record), Acad::eOk);
    record->close();
    layers->close();
    host::endCommandChanges();
    EXPECT_EQ(entityLayer(line), added);
    ASSERT_TRUE(host::undoLastCommand(undone));
    EXPECT_TRUE(entityLayer(line).isNull());
  }
}
