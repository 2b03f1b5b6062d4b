#include "HostTestSupport.h"
#include "host/db/Drawing.h"
#include "host/editor/CommandLine.h"
#include "host/runtime/ModuleLoader.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"
#include "sdk/OdRxModule.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using host::runtime::loadModule;
using host::runtime::unloadModule;

// Holds the test module open beside the loader, so that its record of events (and the misbehaviour it
// is asked for) survives the loader's unloading.
class TestModuleFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    handle_ = dlopen(TESTMODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle_, nullptr) << dlerror();
    events_ = reinterpret_cast<const char* (*)()>(dlsym(handle_, "testmoduleEvents"));
    clear_ = reinterpret_cast<void (*)()>(dlsym(handle_, "testmoduleClearEvents"));
    stayLocked_ = reinterpret_cast<void (*)(bool)>(dlsym(handle_, "testmoduleStayLocked"));
    leaveCommands_ = reinterpret_cast<void (*)(bool)>(dlsym(handle_, "testmoduleLeaveCommands"));
    ASSERT_TRUE(events_ && clear_ && stayLocked_ && leaveCommands_);
    clear_();
  }
  void TearDown() override {
    host::runtime::unloadAllModules();
    host::closeDrawing();
    if (handle_) dlclose(handle_);
  }
  std::string events() const { return events_(); }
  AcEdCommandStack* stack() { return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

  void* handle_ = nullptr;
  const char* (*events_)() = nullptr;
  void (*clear_)() = nullptr;
  void (*stayLocked_)(bool) = nullptr;
  void (*leaveCommands_)(bool) = nullptr;
};

TEST_F(TestModuleFixture, LoadAndUnloadFollowTheProtocolInOrder) {
  std::string error;
  ASSERT_TRUE(host::openDrawing(VIRA_SOURCE_DIR "/examples/site-plan.dxf", error)) << error;
  ASSERT_TRUE(loadModule(L"" TESTMODULE_PATH, error)) << error;
  EXPECT_EQ(events(), "create addRef initApp msg1 msg3");
  EXPECT_NE(stack()->lookupCmd(L"Hallo"), nullptr);
  EXPECT_NE(stack()->lookupCmd(L"_TestPick"), nullptr);
  auto* linker = AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
  EXPECT_FALSE(linker->isApplicationLocked(L"" TESTMODULE_PATH)) << "the module unlocked itself";
  EXPECT_FALSE(loadModule(L"" TESTMODULE_PATH, error));
  EXPECT_NE(error.find("already loaded"), std::string::npos) << error;

  // The C++ export keeps its decorated name; a second call answers the same object and leaves the
  // caller's handle alone.
  auto create = reinterpret_cast<OdRxModule* (*)(HINSTANCE&)>(
      dlsym(handle_, host::runtime::kOdrxCreateModuleObjectSymbol));
  ASSERT_NE(create, nullptr);
  host::runtime::LoadedModule* loaded = host::runtime::findModule(std::wstring(L"" TESTMODULE_PATH));
  ASSERT_NE(loaded, nullptr);
  int marker = 0;
  HINSTANCE instance = &marker;
  EXPECT_EQ(create(instance), loaded->module);
  EXPECT_EQ(instance, &marker);
  EXPECT_EQ(loaded->module->getModuleInstance(), loaded->library);

  clear_();
  ASSERT_TRUE(unloadModule(L"" TESTMODULE_PATH, false, error)) << error;
  EXPECT_EQ(events(), "msg4 uninitApp msg2 release deleteModule");
  EXPECT_EQ(stack()->lookupCmd(L"Hallo"), nullptr);
  EXPECT_EQ(stack()->lookupCmd(L"_TestSend"), nullptr);

  // Loaded again, the module makes a new object.
  clear_();
  ASSERT_TRUE(loadModule(L"" TESTMODULE_PATH, error)) << error;
  EXPECT_EQ(events(), "create addRef initApp msg1 msg3");
}

TEST_F(TestModuleFixture, LispFunctionsAreDefinedPerDrawingAndInvokedThroughTheModule) {
  std::string error;
  ASSERT_TRUE(loadModule(L"" TESTMODULE_PATH, error)) << error;
  hosttest::TranscriptCapture transcript;
  EXPECT_FALSE(host::editor::executeCommandLine(L"(testfun)")) << "no drawing, no functions";
  ASSERT_TRUE(host::openDrawing(VIRA_SOURCE_DIR "/examples/site-plan.dxf", error)) << error;
  host::runtime::broadcastAppMessage(AcRx::kLoadDwgMsg, nullptr);
  resbuf layer;
  ASSERT_EQ(acedGetVar(L"clayer", &layer), RTNORM);
  EXPECT_EQ(std::wstring(layer.resval.rstring), host::currentLayerName());
  acutDelString(layer.resval.rstring);
  EXPECT_TRUE(host::editor::executeCommandLine(L"( TESTFUN )"));
  EXPECT_FALSE(host::editor::executeCommandLine(L"(testfun 1 2)"));
  EXPECT_FALSE(host::editor::executeCommandLine(L"(testfun"));
  EXPECT_EQ(transcript.text(),
            "; error: no function definition: testfun\n"
            "testfun called with code 0\n"
            "; error: this host calls LISP functions without arguments only\n"
            "; error: malformed list on input\n");
}

TEST_F(TestModuleFixture, HostCleansUpAfterAModuleThatForgetsItsCommandsAndKeepsLocked) {
  stayLocked_(true);
  leaveCommands_(true);
  std::string error;
  ASSERT_TRUE(loadModule(L"" TESTMODULE_PATH, error)) << error;
  EXPECT_FALSE(unloadModule(L"" TESTMODULE_PATH, false, error));
  EXPECT_NE(error.find("locked"), std::string::npos) << error;
  EXPECT_NE(stack()->lookupCmd(L"Hallo"), nullptr);
  ASSERT_TRUE(unloadModule(L"" TESTMODULE_PATH, true, error)) << error;
  // Its code is unmapped: no command may point into it any more.
  EXPECT_EQ(stack()->lookupCmd(L"Hallo"), nullptr);
  EXPECT_EQ(stack()->lookupCmd(L"_TestPick"), nullptr);
  stayLocked_(false);
  leaveCommands_(false);
}

TEST(ModuleLoader, RefusesFilesThatAreNoModulesOfThisHost) {
  std::string error;
  EXPECT_FALSE(loadModule(L"/no/such/module.so", error));
  EXPECT_NE(error.find("no such file"), std::string::npos) << error;
  EXPECT_FALSE(loadModule(L"" VIRA_SOURCE_DIR "/examples/one-pair.txt", error));
  EXPECT_NE(error.find("cannot load module"), std::string::npos) << error;
  EXPECT_FALSE(loadModule(L"" HOSTLIB_PATH, error));
  EXPECT_NE(error.find("does not export acrxEntryPoint"), std::string::npos) << error;
  EXPECT_FALSE(loadModule(L"" TESTMODULE_BADVERSION_PATH, error));
  EXPECT_NE(error.find("built for host interface 2.7.0.1; this host implements 2.6"), std::string::npos) << error;
  EXPECT_TRUE(host::runtime::loadedModules().empty());
}

}  // namespace
