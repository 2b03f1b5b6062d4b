// The module's entry, its tables and its application object against the host's registry and command stack.
#include "app/AcRxDbxApp.h"
#include "app/ArxEntries.h"
#include "app/CDrxModule.h"
#include "app/MfcToolbar.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"
#include "sdk/OdRxModule.h"

#include <gtest/gtest.h>

#include <string>

namespace {

AcEdCommandStack* stack() { return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

bool anyViraCommand() {
  for (const ACHAR* name : {L"_ViraCoordDef", L"_ViraPtPick", L"_ViraCadtool"})
    if (stack()->lookupGlobalCmd(name) != nullptr) return true;
  return false;
}

TEST(EntryTableTest, GrowsByDoublingButAtLeastEightAndByFixedStepsWhenLarge) {
  ArxEntryTable<int> table;
  EXPECT_EQ(table.Capacity(), 0u);
  std::vector<std::size_t> capacities;
  for (int i = 0; i < 40; ++i) {
    table.Append(i);
    if (capacities.empty() || capacities.back() != table.Capacity()) capacities.push_back(table.Capacity());
  }
  EXPECT_EQ(capacities, (std::vector<std::size_t>{8, 16, 32, 64}));

  // Entries behind the insertion point move up by one.
  table.InsertAt(1, 100);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 100);
  EXPECT_EQ(table[2], 1);
  EXPECT_EQ(table[40], 39);
  EXPECT_THROW(table[41], std::out_of_range);
}

TEST(ApplicationTest, InitialiseRegistersTheGroupAndUnloadRemovesIt) {
  AcRxDbxApp& app = ViraApplication();
  ASSERT_FALSE(anyViraCommand());
  // Messages without work of their own (and codes the host does not define) change nothing.
  for (int code : {0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 99, -1}) {
    EXPECT_EQ(app.Dispatch(static_cast<AcRx::AppMsgCode>(code), nullptr), AcRx::kRetOK) << code;
    EXPECT_FALSE(anyViraCommand()) << code;
  }

  EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
  AcEdCommand* coordDef = stack()->lookupCmd(L"ViraCoordDef");
  ASSERT_NE(coordDef, nullptr);
  EXPECT_EQ(std::wstring(coordDef->groupName()), L"TomaViraCadtoolsV10");
  EXPECT_EQ(std::wstring(coordDef->globalName()), L"_ViraCoordDef");
  EXPECT_EQ(coordDef->commandFlags(), ACRX_CMD_TRANSPARENT);
  ASSERT_NE(stack()->lookupCmd(L"_ViraCadtool"), nullptr);
  EXPECT_NE(ViraToolbar(), nullptr);

  EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
  EXPECT_FALSE(anyViraCommand());
  EXPECT_EQ(ViraToolbar(), nullptr);
}

TEST(ModuleObjectTest, OneObjectPerProcessUntilTheHostDeletesIt) {
  int anchor = 0, other = 0;
  HINSTANCE first = &anchor;
  OdRxModule* module = odrxCreateModuleObject(first);
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(first, nullptr);
  EXPECT_EQ(module->getModuleInstance(), &anchor);

  HINSTANCE second = &other;
  EXPECT_EQ(odrxCreateModuleObject(second), module);
  EXPECT_EQ(second, static_cast<HINSTANCE>(&other));

  module->addRef();
  module->addRef();
  module->release();
  EXPECT_EQ(module->numRefs(), 1);

  module->deleteModule();
  EXPECT_EQ(ViraModuleObject(), nullptr);
  HINSTANCE again = nullptr;
  OdRxModule* fresh = odrxCreateModuleObject(again);
  ASSERT_NE(fresh, nullptr);
  EXPECT_EQ(fresh->numRefs(), 0);
  // Without the loader's handle the module still knows its file: the one holding its code.
  EXPECT_FALSE(fresh->moduleName().empty());
  fresh->deleteModule();
}

}  // namespace
