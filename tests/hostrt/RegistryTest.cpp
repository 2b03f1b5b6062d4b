#include "sdk/AcApDocManager.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"

#include <gtest/gtest.h>

namespace {

void noop() {}

AcEdCommandStack* stack() { return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

TEST(Registry, ServicesAreFoundByKeyAndCheckedByClass) {
  AcRxObject* linker = acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER);
  ASSERT_NE(AcRxDynamicLinker::cast(linker), nullptr);
  EXPECT_EQ(AcEdCommandStack::cast(linker), nullptr) << "a lookup must not pass for the wrong service";
  ASSERT_NE(stack(), nullptr);
  EXPECT_EQ(acrxSysRegistry()->at(L"dynamiclinker"), nullptr) << "keys are exact";
  EXPECT_TRUE(acDocManager->curDocument()->isKindOf(AcApDocument::desc()));
}

TEST(Registry, ModuleClassesJoinTheTreeAndLeaveByBranch) {
  AcRxClass* derived = newAcRxClass(L"TestDerived", L"TestBase");
  ASSERT_NE(derived, nullptr);
  EXPECT_EQ(derived->myParent(), nullptr) << "the parent is not known yet";
  AcRxClass* base = newAcRxClass(L"TestBase", L"AcRxObject");
  EXPECT_EQ(newAcRxClass(L"TestBase", L"AcRxObject"), base);
  acrxBuildClassHierarchy();
  EXPECT_EQ(derived->myParent(), base);
  EXPECT_TRUE(derived->isDerivedFrom(AcRxObject::desc()));

  auto* classes = AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY));
  ASSERT_NE(classes, nullptr);
  deleteAcRxClassBranch(base);
  EXPECT_FALSE(classes->has(L"TestBase"));
  EXPECT_FALSE(classes->has(L"TestDerived"));
  // The host's own classes are not the module's to remove.
  deleteAcRxClassBranch(AcRxObject::desc());
  EXPECT_TRUE(classes->has(L"AcRxObject"));
  EXPECT_TRUE(classes->has(L"AcEdCommandStack"));
}

TEST(CommandStack, TypedNamesMatchLocalOrGlobalWithOrWithoutUnderscore) {
  ASSERT_EQ(stack()->addCommand(L"TomaViraCadtoolsV10", L"_ViraCoordDef", L"ViraCoordDef", ACRX_CMD_TRANSPARENT,
                                noop),
            Acad::eOk);
  ASSERT_EQ(stack()->addCommand(L"Other", L"Plain", L"Einfach", ACRX_CMD_MODAL, noop), Acad::eOk);
  AcEdCommand* coord = stack()->lookupGlobalCmd(L"_ViraCoordDef");
  ASSERT_NE(coord, nullptr);
  for (const wchar_t* typed : {L"_ViraCoordDef", L"ViraCoordDef", L"viracoorddef", L"_VIRACOORDDEF"})
    EXPECT_EQ(stack()->lookupCmd(typed), coord) << typed;
  AcEdCommand* plain = stack()->lookupGlobalCmd(L"Plain");
  for (const wchar_t* typed : {L"_plain", L"plain", L"Einfach"}) EXPECT_EQ(stack()->lookupCmd(typed), plain) << typed;
  // "_" asks for the global name: a local name does not answer to it.
  for (const wchar_t* typed : {L"_Einfach", L"__ViraCoordDef", L"_", L"", L"ViraCoord"})
    EXPECT_EQ(stack()->lookupCmd(typed), nullptr) << typed;

  EXPECT_EQ(stack()->addCommand(L"tomaviracadtoolsv10", L"_viracoorddef", L"Neu", 0, noop), Acad::eDuplicateKey);
  EXPECT_EQ(stack()->addCommand(L"TomaViraCadtoolsV10", L"_New", L"VIRACOORDDEF", 0, noop), Acad::eDuplicateKey);
  EXPECT_EQ(stack()->addCommand(L"G", L"_X", L"X", 0, nullptr), Acad::eInvalidInput);
  EXPECT_EQ(stack()->addCommand(nullptr, L"_X", L"X", 0, noop), Acad::eInvalidInput);

  // A later group's command hides an earlier one of the same name.
  ASSERT_EQ(stack()->addCommand(L"Later", L"_ViraCoordDef", L"ViraCoordDef", 0, noop), Acad::eOk);
  EXPECT_STREQ(stack()->lookupCmd(L"ViraCoordDef")->groupName(), L"Later");
  EXPECT_EQ(stack()->removeGroup(L"Later"), Acad::eOk);

  EXPECT_EQ(stack()->removeCmd(L"TomaViraCadtoolsV10", L"_ViraCoordDef"), Acad::eOk);
  EXPECT_EQ(stack()->removeCmd(L"TomaViraCadtoolsV10", L"_ViraCoordDef"), Acad::eKeyNotFound);
  EXPECT_EQ(stack()->lookupCmd(L"ViraCoordDef"), nullptr);
  EXPECT_EQ(stack()->removeGroup(L"Other"), Acad::eOk);
  EXPECT_EQ(stack()->lookupCmd(L"Einfach"), nullptr);
}

}  // namespace
