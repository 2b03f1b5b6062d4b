// Guards: the highlight lasts exactly as long as its guard, and the document lock nests with other locks.
#include "cad/AcDbHighlight.h"
#include "cad/AcDocLockCurrentDocument.h"
#include "host/db/DrawingView.h"
#include "sdk/AcApDocManager.h"
#include "sdk/AcDbOpen.h"
#include "tests/hostdb/DrawingFixture.h"
#include "tests/hostdb/ModelSpace.h"

namespace {

class GuardTest : public DrawingTest {};

TEST_F(GuardTest, HighlightLastsAsLongAsTheGuard) {
  openSample();
  AcDbObjectId id = firstOnLayer(db(), L"Survey");
  {
    AcDbHighlight guard(id);
    EXPECT_TRUE(guard.IsHighlighted());
    EXPECT_TRUE(host::isHighlighted(id));
  }
  EXPECT_FALSE(host::isHighlighted(id));

  // An entity that cannot be opened is not highlighted, and the guard's end touches nothing.
  AcDbEntity* busy = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(busy, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_FALSE(AcDbHighlight(id).IsHighlighted());
  busy->close();
  EXPECT_FALSE(host::isHighlighted(id));
  EXPECT_FALSE(AcDbHighlight(AcDbObjectId()).IsHighlighted());
}

TEST_F(GuardTest, DocumentLockHoldsForItsLifetimeAndReleasesOnlyItsOwnLock) {
  openSample();
  AcApDocument* document = acDocManager->curDocument();
  ASSERT_NE(document, nullptr);
  ASSERT_EQ(document->myLockMode(), AcAp::kNotLocked);
  {
    AcDocLockCurrentDocument outer;
    EXPECT_EQ(outer.Status(), Acad::eOk);
    EXPECT_EQ(document->myLockMode(), AcAp::kWrite);
    {
      AcDocLockCurrentDocument inner;
      EXPECT_EQ(inner.Status(), Acad::eOk);
    }
    EXPECT_EQ(document->myLockMode(), AcAp::kWrite) << "the outer lock still holds";
  }
  EXPECT_EQ(document->myLockMode(), AcAp::kNotLocked);
  EXPECT_EQ(acDocManager->unlockDocument(document), Acad::eNotApplicable) << "no lock left behind";
}

}  // namespace
