#include "CadhostRun.h"

#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace e2e {

namespace {
constexpr const char* kNoUpdateServer = "[Platform]\nUpdateServer=127.0.0.1:9\n";
}  // namespace

void CadhostTest::SetUp() {
  // The module's update check goes to a port on this machine that nobody listens on.
  fs::create_directories(configHome() / "TRELLANOVA 10");
  std::ofstream(configHome() / "TRELLANOVA 10" / "registry.ini", std::ios::binary) << kNoUpdateServer;
}

fs::path CadhostTest::sitePlan() { return fs::path(VIRA_SOURCE_DIR) / "examples" / "site-plan.dxf"; }

HostRun CadhostTest::cadhost(const std::string& script, const std::string& extraArguments) {
  return cadhostOn(sitePlan(), script, extraArguments);
}

HostRun CadhostTest::cadhostOn(const fs::path& drawing, const std::string& script, const std::string& extraArguments) {
  const fs::path scriptFile = dir_ / "script.txt";
  std::ofstream(scriptFile, std::ios::binary) << script;
  // The user's settings (the language among them) are the test's own.
  const std::string command = "XDG_CONFIG_HOME='" + configHome().string() + "' " + std::string(CADHOST_PATH) + " '" +
                              drawing.string() + "' --module '" + module_ + "' --script '" + scriptFile.string() + "' --save '" +
                              saved().string() + "' " + extraArguments;
  return runCommand(command);
}

HostRun CadhostTest::runCommand(const std::string& command) { return runShell(command, dir_); }

void CadhostTest::setLanguage(const std::string& code) {
  fs::create_directories(configHome() / "TRELLANOVA 10");
  std::ofstream(configHome() / "TRELLANOVA 10" / "registry.ini", std::ios::binary)
      << "[Software\\Halvern Optik\\TRELLANOVA 10]\nIcadViraLanguage=" << code << "\n" << kNoUpdateServer;
}

HostRun CadhostTest::example(const std::string& name, const std::string& extraArguments) {
  return cadhost(slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / name), extraArguments);
}

std::string CadhostTest::checkDrawing(const std::array<double, 16>& matrix) {
  std::ostringstream command;
  command.precision(17);
  command << VIRA_PYTHON << " '" << E2E_SCRIPTS_DIR << "/check_drawing.py' '" << sitePlan().string() << "' '"
          << saved().string() << "'";
  for (double v : matrix) command << ' ' << v;
  std::string verdict;
  runForOutput(command.str() + " 2>&1", verdict);
  if (!verdict.empty() && verdict.back() == '\n') verdict.pop_back();
  return verdict;
}

std::string after(const std::string& text, const std::string& from) {
  const std::size_t at = text.find(from);
  return at == std::string::npos ? std::string() : text.substr(at);
}

std::array<double, 16> planarSimilarity(const std::array<double, 3>& a1, const std::array<double, 3>& a2,
                                        const std::array<double, 3>& t1, const std::array<double, 3>& t2,
                                        bool scale) {
  using C = std::complex<double>;
  const C ca1(a1[0], a1[1]), ca2(a2[0], a2[1]), ct1(t1[0], t1[1]), ct2(t2[0], t2[1]);
  const auto distance = [](const std::array<double, 3>& p, const std::array<double, 3>& q) {
    return std::sqrt((p[0] - q[0]) * (p[0] - q[0]) + (p[1] - q[1]) * (p[1] - q[1]) + (p[2] - q[2]) * (p[2] - q[2]));
  };
  const double s = scale ? distance(t1, t2) / distance(a1, a2) : 1.0;
  // Unit turn from the direction of A1A2 to that of T1T2 (no turn when T1 and T2 coincide).
  const C turnA = std::polar(1.0, std::arg(ca2 - ca1));
  const C turnT = std::polar(1.0, std::arg(ct2 - ct1));
  const C f = s * turnT / turnA;
  // p' = t1 + f (p - a1) in the plane, z' = t1.z + s (z - a1.z).
  const C shift = ct1 - f * ca1;
  return {f.real(), -f.imag(), 0.0, shift.real(),
          f.imag(), f.real(), 0.0, shift.imag(),
          0.0, 0.0, s, t1[2] - s * a1[2],
          0.0, 0.0, 0.0, 1.0};
}

}  // namespace e2e
