// The host under failures around it: memory that runs out while a drawing loads or a command changes it,
// module files cut short, a reader of the transcript that went away, a save name that is empty. None may
// end the host by a signal, and none may leave a drawing half-changed.
#include "HostTestSupport.h"
#include "host/db/Drawing.h"
#include "host/db/Undo.h"
#include "host/editor/CommandLine.h"
#include "host/runtime/SharedObjectCheck.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbHostApplicationServices.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"
#include "tests/support/ReadFile.h"
#include "tests/support/ScratchDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define VIRA_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VIRA_UNDER_ASAN 1
#endif
#endif

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

constexpr const char* kNoAddressLimitUnderAsan =
    "the address sanitizer reserves terabytes of shadow memory, so an address-space limit cannot be set";

struct Ended {
  int status = -1;  // the raw wait status
  std::string err;
  bool exited(int code) const { return WIFEXITED(status) && WEXITSTATUS(status) == code; }
};

class HostFailureTest : public ::testing::Test {
 protected:
  void SetUp() override { std::ofstream(dir_ / "script.txt") << "Hallo\n"; }

  // Runs cadhost with `args`; `prepare` runs in the child before the host starts (limits, descriptors).
  Ended cadhost(std::vector<std::string> args, const std::function<void()>& prepare = {}) {
    args.insert(args.begin(), CADHOST_PATH);
    const fs::path err = dir_ / "err";
    const pid_t pid = ::fork();
    if (pid == 0) {
      const int fd = ::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      ::dup2(fd, 2);
      if (prepare) prepare();
      std::vector<char*> argv;
      for (std::string& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      ::execv(argv[0], argv.data());
      ::_exit(127);
    }
    Ended ended;
    ::waitpid(pid, &ended.status, 0);
    ended.err = readFile(err);
    return ended;
  }

  ScratchDir dir_{"hostrt-failure"};
};

TEST_F(HostFailureTest, ModuleFilesCutShortOrForeignAreRefusedBeforeTheyAreMapped) {
  EXPECT_EQ(host::runtime::checkSharedObject(TESTMODULE_PATH), "");
  const std::string module = readFile(TESTMODULE_PATH);
  ASSERT_GT(module.size(), 4096u);
  struct Case {
    std::string bytes;
    const char* why;
  };
  const Case cases[] = {
      {module.substr(0, module.size() * 6 / 10), "is cut short"},  // segments beyond the end
      {module.substr(0, module.size() - 16), "is cut short"},      // only the section headers' tail is gone
      {module.substr(0, 40), "shorter than an ELF header"},
      {"#!/bin/sh\necho not a module\n", "is not a shared object"},
      {module.substr(0, 64) + std::string(4096, '\0'), "is cut short"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    std::ofstream(dir_ / "broken.so", std::ios::binary) << c.bytes;
    const Ended run = cadhost({"--module", (dir_ / "broken.so").string(), "--script", (dir_ / "script.txt").string()});
    EXPECT_TRUE(run.exited(1)) << run.status << " " << run.err;
    EXPECT_THAT(run.err, HasSubstr(c.why));
  }
}

TEST_F(HostFailureTest, AClosedTranscriptAndAnEmptySaveNameNeitherEndNorDamageTheRun) {
  // Nobody reads the transcript: the host still runs the script and saves.
  const fs::path saved = dir_ / "saved.dxf";
  const Ended run = cadhost({VIRA_SOURCE_DIR "/examples/site-plan.dxf", "--module", TESTMODULE_PATH, "--script",
                             (dir_ / "script.txt").string(), "--save", saved.string()},
                            [] {
                              int ends[2];
                              if (::pipe(ends) != 0) ::_exit(126);
                              ::close(ends[0]);
                              ::dup2(ends[1], 1);
                            });
  EXPECT_TRUE(run.exited(0)) << run.status << " " << run.err;
  EXPECT_EQ(readFile(saved), readFile(VIRA_SOURCE_DIR "/examples/site-plan.dxf"));

  // An empty name never means "over the drawing that was opened".
  const fs::path drawing = dir_ / "plan.dxf";
  fs::copy_file(VIRA_SOURCE_DIR "/examples/site-plan.dxf", drawing);
  const auto before = fs::last_write_time(drawing);
  const Ended empty = cadhost({drawing.string(), "--module", TESTMODULE_PATH, "--script",
                               (dir_ / "script.txt").string(), "--save", ""});
  EXPECT_TRUE(empty.exited(2)) << empty.status;
  EXPECT_THAT(empty.err, HasSubstr("--save needs a file name"));
  EXPECT_EQ(fs::last_write_time(drawing), before);
}

TEST_F(HostFailureTest, ADrawingLargerThanTheMemoryIsRefusedWithAMessage) {
#ifdef VIRA_UNDER_ASAN
  GTEST_SKIP() << kNoAddressLimitUnderAsan;
#endif
  // 1.5 GB of nothing (a sparse file costs no disk) under a 1 GB address-space limit.
  const fs::path big = dir_ / "big.dxf";
  std::ofstream(big).close();
  fs::resize_file(big, std::uintmax_t{1536} << 20);
  const Ended run = cadhost({big.string(), "--script", (dir_ / "script.txt").string(), "--save",
                             (dir_ / "out.dxf").string()},
                            [] {
                              const rlimit gigabyte{rlim_t{1} << 30, rlim_t{1} << 30};
                              ::setrlimit(RLIMIT_AS, &gigabyte);
                            });
  EXPECT_TRUE(run.exited(1)) << run.status << " " << run.err;
  EXPECT_THAT(run.err, HasSubstr("not enough memory to open this drawing"));
  EXPECT_FALSE(fs::exists(dir_ / "out.dxf"));
}

// What the transformation command does: every model-space entity, a failure caught and shown, as the
// module's dialog does.
void growCommand() {
  AcGeMatrix3d grow;
  grow.entry[0][0] = grow.entry[1][1] = grow.entry[2][2] = 1.5;
  grow.entry[0][3] = 2500000.0;
  try {
    AcDbBlockTable* table = nullptr;
    acdbHostApplicationServices()->workingDatabase()->getBlockTable(table, AcDb::kForRead);
    AcDbBlockTableRecord* model = nullptr;
    table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
    table->close();
    AcDbBlockTableRecordIterator* raw = nullptr;
    model->newIterator(raw, true, true);
    std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    model->close();
    for (; !it->done(); it->step(true, true)) {
      AcDbEntity* entity = nullptr;
      if (it->getEntity(entity, AcDb::kForWrite, false) != Acad::eOk) continue;
      entity->transformBy(grow);
      entity->close();
    }
  } catch (const std::exception& e) {
    acutPrintf(L"\n[alert] %hs\n", e.what());
  }
}

// VmSize of this process, in bytes.
std::size_t addressSpaceInUse() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("VmSize:", 0) == 0) return std::stoul(line.substr(7)) * 1024;
  return 0;
}

TEST_F(HostFailureTest, ACommandThatRunsOutOfMemoryIsTakenBackWhole) {
#ifdef VIRA_UNDER_ASAN
  GTEST_SKIP() << kNoAddressLimitUnderAsan;
#endif
  const fs::path drawing = dir_ / "many-lines.dxf";
  {
    std::ofstream out(drawing, std::ios::binary);
    out << "  0\nSECTION\n  2\nENTITIES\n";
    for (int i = 0; i < 150000; ++i)
      out << "  0\nLINE\n  8\n0\n 10\n" << i << ".25\n 20\n5634012.345\n 30\n0.0\n 11\n" << i
          << ".75\n 21\n5634013.5\n 31\n0.0\n";
    out << "  0\nENDSEC\n  0\nEOF\n";
  }
  // The child opens the drawing, then gets only a few megabytes more than it holds: the command runs out
  // part-way. Its exit status says what went wrong.
  const pid_t pid = ::fork();
  if (pid == 0) {
    std::string error;
    if (!host::openDrawing(drawing.string(), error)) ::_exit(10);
    auto* stack = AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    stack->addCommand(L"FailureTest", L"_Grow", L"Grow", 0, growCommand);
    rlimit before{};
    ::getrlimit(RLIMIT_AS, &before);
    const rlimit tight{addressSpaceInUse() + (6u << 20), before.rlim_max};
    hosttest::TranscriptCapture transcript;
    ::setrlimit(RLIMIT_AS, &tight);
    host::editor::executeCommandLine(L"Grow");
    ::setrlimit(RLIMIT_AS, &before);
    const std::string& said = transcript.text();
    if (said.find("[alert] std::bad_alloc") == std::string::npos) ::_exit(11);  // the module's view stays
    if (said.find("Command _Grow failed (out of memory): the drawing is restored as it was before the command.") ==
        std::string::npos)
      ::_exit(12);
    if (!host::anyCommandTakenBack()) ::_exit(13);
    if (!host::saveDrawing((dir_ / "after.dxf").string(), error)) ::_exit(14);
    if (readFile(dir_ / "after.dxf") != readFile(drawing)) ::_exit(15);
    // With memory enough the same command goes through.
    host::editor::executeCommandLine(L"Grow");
    if (!host::saveDrawing((dir_ / "grown.dxf").string(), error)) ::_exit(16);
    if (readFile(dir_ / "grown.dxf").find(" 10\n2500000.375\n") == std::string::npos) ::_exit(17);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "wait status " << status;
}

}  // namespace
