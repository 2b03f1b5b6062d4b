// The module file inside the host: loading, its plain command, and unloading without leftovers.
#include "CadhostRun.h"

#include <cstdio>
#include <memory>
#include <set>

namespace e2e {
namespace {

TEST_F(CadhostTest, ViraCadtoolAnswersAndUnloadingLeavesNoCommandBehind) {
  HostRun run = cadhost("ViraCadtool\n_ViraCadtool\n", "--trace");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Command: ViraCadtool\nVIRA cadtools \nCommand: _ViraCadtool\nVIRA cadtools \n");
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
  EXPECT_NE(run.err.find("interface version 2.6.0.1"), std::string::npos) << run.err;
  // The host names what a module left registered when it has to clean up after it.
  EXPECT_NE(run.err.find("message 2 to"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("left behind"), std::string::npos) << run.err;
}

// What the dynamic linker can see of the module file, as nm lists it (C++ names demangled).
std::set<std::string> exportedSymbols(const std::string& file) {
  std::set<std::string> names;
  const std::string command = "nm -D -C --defined-only '" + file + "'";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (!pipe) return names;
  char line[4096];
  while (std::fgets(line, sizeof line, pipe.get()) != nullptr) {
    std::string text(line);
    if (!text.empty() && text.back() == '\n') text.pop_back();
    // "ADDRESS TYPE NAME"
    const std::size_t name = text.find(' ', text.find(' ') + 1);
    if (name != std::string::npos) names.insert(text.substr(name + 1));
  }
  return names;
}

TEST(ModuleFileTest, ExportsItsFourEntryPointsAndNothingElse) {
  // The class library is linked into the module; if its names leaked, two modules carrying different
  // versions of it would bind to each other's code.
  EXPECT_EQ(exportedSymbols(VIRA_MODULE_PATH),
            (std::set<std::string>{"acrxEntryPoint", "acrxGetApiVersion",
                                   "odrxCreateModuleObject(void*&)",
                                   "odrxGetAPIVersion(int&, int&, int&, int&)"}));
}

}  // namespace
}  // namespace e2e
