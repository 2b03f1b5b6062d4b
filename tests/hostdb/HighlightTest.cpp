// Highlighting for the pick feedback: the view hears about each change, and parts of entities are refused.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "host/db/DrawingView.h"
#include "sdk/AcDbOpen.h"

TEST_F(DrawingTest, HighlightWorksOnReadOpensAndTellsTheView) {
  openSample();
  std::vector<AcDbObjectId> redrawn;
  host::RedrawHandler previous = host::setRedrawHandler([&](AcDbObjectId id) { redrawn.push_back(id); });
  AcDbObjectId id = firstOnLayer(db(), L"Survey");
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entity->highlight(), Acad::eOk);
  EXPECT_EQ(entity->highlight(), Acad::eOk);  // already shown so: no second redraw
  EXPECT_TRUE(host::isHighlighted(id));
  EXPECT_EQ(entity->highlight(AcDbFullSubentPath({id}, 1)), Acad::eInvalidInput);
  EXPECT_EQ(entity->draw(), Acad::eOk);
  entity->close();
  EXPECT_TRUE(host::isHighlighted(id));  // outlives the open, as on screen

  ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entity->unhighlight(), Acad::eOk);
  entity->close();
  EXPECT_FALSE(host::isHighlighted(id));
  EXPECT_EQ(redrawn, (std::vector<AcDbObjectId>{id, id, id}));
  host::setRedrawHandler(std::move(previous));
}
