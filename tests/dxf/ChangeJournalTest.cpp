// Taking steps of work back: after an undo or a rollback the drawing must save byte for byte as it did
// before the step, whatever the step did (moved entities, appended some, added a layer, erased one, set a
// header variable, even added whole sections), and doing the step again must give the same drawing.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"
#include "host/dxf/Transform.h"

#include <gtest/gtest.h>

namespace {

const dxf::Matrix44 kMove{{{0.8, -0.6, 0.0, 1000.0}, {0.6, 0.8, 0.0, -250.5}, {0.0, 0.0, 1.0, 3.0}, {0.0, 0.0, 0.0, 1.0}}};

void moveEverything(dxf::Document& doc) {
  for (dxf::Entity* e : doc.modelSpace()) {
    doc.journal().recordChange(*e);
    dxf::transformEntity(*e, kMove);
  }
}

// Appends a point, adds a layer, erases the first entity and makes the new layer current.
void addAndErase(dxf::Document& doc) {
  dxf::TagList tags;
  tags.append(100, "AcDbPoint");
  tags.append(10, "2561234.5");
  tags.append(20, "5634012.25");
  tags.append(30, "0.0");
  doc.appendToModelSpace("POINT", tags);
  std::string error;
  if (doc.layerCount() > 0) {
    ASSERT_TRUE(doc.addLayer("Vermessung", 3, "", error)) << error;
  }
  doc.erase(*doc.modelSpace().front());
  doc.setHeaderText("$CLAYER", doc.layerCount() > 0 ? "Vermessung" : "0");
}

TEST(ChangeJournal, UndoGivesEveryDrawingBackByteForByteAndTheStepCanBeDoneAgain) {
  for (const auto& path : dxftest::corpus()) {
    SCOPED_TRACE(path.filename().string());
    std::string error;
    auto doc = dxf::Document::load(path, error);
    ASSERT_TRUE(doc) << error;
    dxf::ChangeJournal& journal = doc->journal();
    const std::string original = doc->bytes();

    journal.beginStep("move");
    moveEverything(*doc);
    ASSERT_TRUE(journal.endStep());
    const std::string moved = doc->bytes();
    ASSERT_NE(moved, original);

    journal.beginStep("add");
    addAndErase(*doc);
    ASSERT_TRUE(journal.endStep());
    const std::string added = doc->bytes();

    int restored = 0, dropped = 0;
    const dxf::ChangeJournal::Observer count{[&](dxf::Entity&) { ++restored; }, [&](dxf::Entity&) { ++dropped; }};
    std::string label;
    ASSERT_TRUE(journal.undoStep(count, &label));
    EXPECT_EQ(label, "add");
    EXPECT_EQ(doc->bytes(), moved);
    EXPECT_EQ(dropped, doc->layerCount() > 0 ? 2 : 1);  // the point, and the layer where there is a table
    EXPECT_GE(restored, 2);                             // the erased entity and the header at least

    // The same work again hands out the same handles: the seed went back with the header.
    journal.beginStep("add");
    addAndErase(*doc);
    journal.endStep();
    EXPECT_EQ(doc->bytes(), added);

    ASSERT_TRUE(journal.undoStep(count));
    ASSERT_TRUE(journal.undoStep(count, &label));
    EXPECT_EQ(label, "move");
    EXPECT_EQ(doc->bytes(), original);
    EXPECT_FALSE(journal.undoStep(count));
    // Records read again from their bytes on undo hold the tags the file gives, children included.
    auto fresh = dxf::Document::load(path, error);
    const auto now = doc->modelSpace(), read = fresh->modelSpace();
    ASSERT_EQ(now.size(), read.size());
    for (std::size_t i = 0; i < now.size(); ++i) {
      ASSERT_EQ(now[i]->children.size(), read[i]->children.size());
      for (std::size_t c = 0; c <= now[i]->children.size(); ++c) {
        const dxf::TagList& a = c == 0 ? now[i]->tags : now[i]->children[c - 1].tags;
        const dxf::TagList& b = c == 0 ? read[i]->tags : read[i]->children[c - 1].tags;
        ASSERT_EQ(a.size(), b.size());
        EXPECT_FALSE(a.modified());
        for (std::size_t t = 0; t < a.size(); ++t)
          ASSERT_TRUE(a.code(t) == b.code(t) && a.text(t) == b.text(t) && a.codeText(t) == b.codeText(t));
      }
    }
  }
}

TEST(ChangeJournal, RollbackForgetsTheStepAndAStepWithoutChangeIsNoStep) {
  const auto& path = dxftest::corpus().back();
  std::string error;
  auto doc = dxf::Document::load(path, error);
  ASSERT_TRUE(doc) << error;
  dxf::ChangeJournal& journal = doc->journal();
  const std::string original = doc->bytes();

  // Opened for a change that did not come, or set to what it was: nothing to undo.
  journal.beginStep("look");
  for (dxf::Entity* e : doc->modelSpace()) journal.recordChange(*e);
  doc->setRawHeader("$ACADVER", 1, std::string(doc->versionCode()));
  EXPECT_FALSE(journal.endStep());
  EXPECT_EQ(journal.closedSteps(), 0u);

  journal.beginStep("move");
  moveEverything(*doc);
  addAndErase(*doc);
  journal.rollbackStep({});
  EXPECT_EQ(doc->bytes(), original);
  EXPECT_EQ(journal.closedSteps(), 0u);

  // Changes made outside any step are a step of their own, closed by the next one.
  moveEverything(*doc);
  const std::string moved = doc->bytes();
  journal.beginStep("add");
  addAndErase(*doc);
  journal.endStep();
  EXPECT_EQ(journal.closedSteps(), 2u);
  ASSERT_TRUE(journal.undoStep({}));
  EXPECT_EQ(doc->bytes(), moved);
  ASSERT_TRUE(journal.undoStep({}));
  EXPECT_EQ(doc->bytes(), original);
}

TEST(ChangeJournal, SectionsAStepAddedGoAgain) {
  const std::string minimal = "  0\nSECTION\n  2\nBLOCKS\n  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  auto doc = dxf::Document::parse(minimal, "minimal.dxf", error);
  ASSERT_TRUE(doc) << error;
  doc->journal().beginStep();
  addAndErase(*doc);
  // A layer where there is no table: the tables, layer 0 and the linetype come with it.
  ASSERT_TRUE(doc->addLayer("Vermessung", 3, "", error)) << error;
  doc->journal().endStep();
  ASSERT_NE(doc->bytes().find("CONTINUOUS"), std::string::npos);
  ASSERT_TRUE(doc->journal().undoStep({}));
  EXPECT_EQ(doc->bytes(), minimal);
  EXPECT_TRUE(doc->modelSpace().empty());
  EXPECT_EQ(doc->layerCount(), 0u);
  EXPECT_FALSE(doc->findLinetype("CONTINUOUS"));
  // The store still works after the sections went: they are made again on demand.
  addAndErase(*doc);
  ASSERT_TRUE(doc->addLayer("Vermessung", 3, "", error)) << error;
  EXPECT_NE(doc->bytes().find("ENTITIES"), std::string::npos);
  EXPECT_TRUE(doc->findLayer("Vermessung"));
}

}  // namespace
