// The update notice inside the host: the module asks a server of the test's own on 127.0.0.1, shows the notice,
// leaves its protocol, and the host ends promptly whatever the server does.
#include "CadhostRun.h"
#include "../support/LoopbackServer.h"

#include <fstream>
#include <sstream>
#include <thread>

namespace e2e {
namespace {

class UpdateNoticeTest : public CadhostTest {
 protected:
  // Runs the script headless with the server at `port`; a host that has not ended after 30 s is stopped
  // (exit status 124). With `lingering` the script comes through a pipe that stays open a while after its last
  // line, as when a person types: the worker's dialog is then waiting for the UI thread when the host ends.
  HostRun run(int port, const std::string& script, bool lingering = false) {
    fs::create_directories(configHome() / "TRELLANOVA 10");
    std::ofstream(configHome() / "TRELLANOVA 10" / "registry.ini", std::ios::binary)
        << "[Platform]\nUpdateServer=127.0.0.1:" << port << "\nBrowser=\"" << browser().string() << "\"\n";
    std::ofstream(browser()) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" << (dir_ / "opened").string() << "'\n";
    fs::permissions(browser(), fs::perms::owner_all);
    std::ofstream(dir_ / "script.txt", std::ios::binary) << script;
    const std::string scriptFile = "'" + (dir_ / "script.txt").string() + "'";
    const std::string command = (lingering ? "(cat " + scriptFile + "; sleep 1) | " : std::string()) +
                                "XDG_CONFIG_HOME='" + configHome().string() + "' XDG_STATE_HOME='" +
                                (dir_ / "state").string() + "' timeout 30 " + CADHOST_PATH + " --headless --module '" +
                                VIRA_MODULE_PATH + "' --script " + (lingering ? "-" : scriptFile);
    return runCommand(command);
  }
  fs::path browser() const { return dir_ / "browser"; }
  std::string protocol() const { return slurp(dir_ / "state" / "TRELLANOVA 10" / "TomaProtokoll.log"); }
  std::string opened() const { return slurp(dir_ / "opened"); }
};

// The protocol without its time stamps.
std::string withoutTimes(const std::string& protocol) {
  std::string lines;
  std::istringstream in(protocol);
  for (std::string line; std::getline(in, line);) {
    const std::size_t stamp = line.find("] ");
    lines += (stamp == std::string::npos ? line : line.substr(0, line.find('[')) + line.substr(stamp + 2)) + "\n";
  }
  return lines;
}

TEST_F(UpdateNoticeTest, ANewerVersionShowsItsLinkAndTheProtocolTellsTheExchange) {
  std::string request;
  LoopbackServer server([&](int connection) {
    request = LoopbackServer::ReadUntil(connection, "\n\n");
    LoopbackServer::Send(connection, "HTTP/1.0 200 OK\r\n\r\n1.01\r\nhttps://example.invalid/viracadtools?%s%n\r\n");
  });
  const HostRun host = run(server.Port(),
                           "@wait dialog 4007\n@dialog 4007 dump\n@dialog 4007 click 4020\n@dialog 4007 click 1\n"
                           "@wait idle\n");
  ASSERT_EQ(host.status, 0) << host.err;
  EXPECT_EQ(request, "GET /viracadtoolsversion.txt HTTP/1.0\nHost: 127.0.0.1\n\n");
  EXPECT_EQ(host.out,
            "dialog 4007 \"VIRA cadtools\"\n"
            "-1 static \"Eine aktuellere Version ist verfügbar. Klicken Sie auf den Link um diese herunterzuladen.\"\n"
            "4020 link \"https://example.invalid/viracadtools?%s%n\\r\\n\"\n"
            "1 button \"OK\"\n");
  for (int waited = 0; waited < 300 && opened().empty(); ++waited)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(opened(), "https://example.invalid/viracadtools?%s%n\n");
  EXPECT_EQ(withoutTimes(protocol()),
            "4 : InstallTomaDebugLogger()\n"
            "3 : CheckViraCadtoolsVersionThread start\n"
            "3 : Line: 1.01\r\n\n"
            "3 : Line: https://example.invalid/viracadtools?%s%n\r\n\n"
            "3 : Neue Version von VIRA cadtools!\n"
            "3 : CheckViraCadtoolsVersionThread end\n"
            "4 : UninstallTomaDebugLogger()\n");
}

// Whatever the server does, the host's run ends when its script ends; the check never holds it up. The
// module is unloaded meanwhile while its thread may still wait for the server.
TEST_F(UpdateNoticeTest, TheHostEndsPromptlyWhateverTheServerDoes) {
  {
    const HostRun host = run(LoopbackServer::ClosedPort(), "ViraCadtool\n@wait idle\n");
    EXPECT_EQ(host.status, 0) << host.err;
    EXPECT_NE(protocol().find("CheckViraCadtoolsVersionThread exception2 Connection refused\n"), std::string::npos)
        << protocol();
    EXPECT_NE(protocol().find("CheckViraCadtoolsVersionThread end"), std::string::npos);
  }
  LoopbackServer silent([&](int) { silent.WaitUntilStopped(); });
  HostRun host = run(silent.Port(), "ViraCadtool\n@wait idle 200\n");
  EXPECT_EQ(host.status, 0) << "a server that never answers: " << host.err;
  EXPECT_EQ(host.out, "Command: ViraCadtool\nVIRA cadtools \n");

  LoopbackServer flood([&](int connection) {
    LoopbackServer::ReadUntil(connection, "\n\n");
    const std::string chunk(4096, 'A');
    while (::send(connection, chunk.data(), chunk.size(), MSG_NOSIGNAL) > 0) {
    }
  });
  host = run(flood.Port(), "@wait idle\n");
  EXPECT_EQ(host.status, 0) << "a server that floods: " << host.err;
  EXPECT_EQ(protocol().find("Neue Version"), std::string::npos);

  // The host ends while the worker waits for its dialog to be shown.
  LoopbackServer newer([&](int connection) {
    LoopbackServer::ReadUntil(connection, "\n\n");
    LoopbackServer::Send(connection, "HTTP/1.0 200 OK\r\n\r\n1.5\r\nhttps://exa");
  });
  host = run(newer.Port(), "ViraCadtool\n", true);
  EXPECT_EQ(host.status, 0) << "a dialog left waiting: " << host.err;
  EXPECT_NE(protocol().find("Neue Version von VIRA cadtools!"), std::string::npos) << protocol();
}

}  // namespace
}  // namespace e2e
