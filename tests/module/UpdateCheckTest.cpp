// The update check against servers of the test's own on 127.0.0.1: the request it sends, how it reads the
// version file, what a hostile server can and cannot do, and the link that the notice opens.
#include "app/CDlgNewVersion.h"
#include "app/ViraResourceIds.h"
#include "app/ViraUpdateCheck.h"
#include "host/ui/UserActions.h"
#include "support/KoSettings.h"
#include "support/KoSocket.h"
#include "tests/support/LoopbackServer.h"
#include "tests/support/ReadFile.h"
#include "tests/support/ScopedEnv.h"
#include "tests/support/ScratchDir.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct Exchange {
  std::string request;
  ViraVersionReply reply;
};

// Runs the exchange against a server that reads the request and sends `answer`, then closes.
Exchange AskServerThatSends(const std::string& answer) {
  Exchange result;
  result.reply.address = "home";
  LoopbackServer server([&](int connection) {
    result.request = LoopbackServer::ReadUntil(connection, "\n\n");
    LoopbackServer::Send(connection, answer);
  });
  ViraAskForVersion({"127.0.0.1", server.Port()}, result.reply);
  return result;
}

TEST(UpdateCheckTest, SendsItsRequestAndReadsTheVersionFile) {
  const Exchange newer = AskServerThatSends("HTTP/1.0 200 OK\r\nServer: t\r\n\r\n1.01\r\nhttp://x/dl\r\nthird\r\n");
  EXPECT_EQ(newer.request, "GET /viracadtoolsversion.txt HTTP/1.0\nHost: 127.0.0.1\n\n");
  EXPECT_TRUE(newer.reply.newer);
  EXPECT_EQ(newer.reply.address, "http://x/dl\r\n") << "the address keeps its line ending";

  struct Case {
    const char* answer;
    bool newer;
    const char* address;
  } cases[] = {
      {"HTTP/1.0 200 OK\r\n\r\n1.0\r\nhttp://a\r\n", false, "http://a\r\n"},
      {"HTTP/1.0 200 OK\n\n1\n", false, "home"},
      {"HTTP/1.0 200 OK\r\n\r\nabc\r\nhttp://a\r\n", false, "http://a\r\n"},
      {"HTTP/1.0 200 OK\r\n\r\n1.5", true, "home"},                              // one line, no line end
      {"HTTP/1.0 404 Not Found\r\n\r\n 2.5e0 beta\r\n", true, "home"},            // any status, blanks first
      {"HTTP/1.0 200 OK\r\n2.0\r\nhttp://a\r\n", false, "home"},                  // no blank line: no body
      {"HTTP/1.0 200 OK\r\n \r\n2.0\r\n", false, "home"},                         // a blank is no empty line
      {"HTTP/1.0 200 OK\r\n\rX-Odd: 1\r\n0.5\r\n3.0\r\n", false, "3.0\r\n"},      // a CR first starts the body
      {"HTTP/1.0 200 OK\r\n\r\n9.0\r\nhttp://cut-o", true, "http://cut-o"},      // closed in mid-line
  };
  for (const Case& c : cases) {
    const Exchange got = AskServerThatSends(c.answer);
    EXPECT_EQ(got.reply.newer, c.newer) << c.answer;
    EXPECT_EQ(got.reply.address, c.address) << c.answer;
  }
  EXPECT_EQ(ViraLeadingNumber("1.01\r\n"), 1.01);
  EXPECT_EQ(ViraLeadingNumber("+2"), 2.0);
  EXPECT_EQ(ViraLeadingNumber("v2"), 0.0);
}

TEST(UpdateCheckTest, HostileServersEndTheExchangeHarmlessly) {
  ViraVersionReply reply;
  const int refused = LoopbackServer::ClosedPort();
  EXPECT_THROW(ViraAskForVersion({"127.0.0.1", refused}, reply), SocketError);

  // Bytes without end: reading stops at the limit, the flood is not held in memory.
  std::size_t sent = 0;
  {
    LoopbackServer flood([&](int connection) {
      LoopbackServer::ReadUntil(connection, "\n\n");
      LoopbackServer::Send(connection, "HTTP/1.0 200 OK\r\n\r\n9");
      const std::string chunk(4096, '9');
      while (::send(connection, chunk.data(), chunk.size(), MSG_NOSIGNAL) > 0) sent += chunk.size();
    });
    ViraAskForVersion({"127.0.0.1", flood.Port()}, reply);
  }
  EXPECT_FALSE(reply.newer) << "a line that never ends is no version";
  EXPECT_GT(sent, kViraMaxReplyBytes);
  // (What a server sends reaches the protocol as text, never as a format: the notice's end-to-end run sends
  // format directives and reads the protocol file.)
}

// The notice's link: its look, and what a click starts. The browser is a script that writes down what it
// was asked to open.
TEST(UpdateCheckTest, NoticeOpensOnlyWebLinks) {
  const ScratchDir dir("update-link");
  const fs::path opened = dir / "opened";
  const fs::path browser = dir / "browser";
  std::ofstream(browser) << "#!/bin/sh\nprintf '%s|' \"$@\" >> '" << opened.string() << "'\n";
  fs::permissions(browser, fs::perms::owner_all);
  const ScopedEnv config("XDG_CONFIG_HOME", (dir / "config").string());
  KoWriteSetting(kKoPlatformSection, "Browser", "\"" + browser.string() + "\" --new-window");

  auto click = [&](const std::wstring& address) {
    CDlgNewVersion notice(nullptr);
    notice.m_address = address;
    EXPECT_TRUE(notice.Create(IDD_NEW_VERSION, nullptr));
    EXPECT_EQ(notice.GetDlgItemText(IDC_NEW_VERSION_LINK), address) << "the link shows what the server sent";
    EXPECT_TRUE(notice.m_link.IsLinkMode() && notice.m_link.IsUnderlined());
    EXPECT_EQ(notice.m_link.GetTextColor(), 0xFF0000u);
    ASSERT_NE(notice.m_link.GetHoverCursor(), nullptr);
    EXPECT_EQ(*notice.m_link.GetHoverCursor(), ui::CursorShape::Hand);
    host::ui::clickButton(*notice.GetDlgItem(IDC_NEW_VERSION_LINK));
    notice.DestroyWindow();
  };
  click(L"ftp://example.invalid/x\r\n");
  click(L"file:///etc/passwd");
  click(L"http://");
  click(L"https://example.invalid/a\x01" L"b");
  click(L"javascript:alert(1)");
  click(L" https://example.invalid/dl?v=1.01&x=%s\r\n");
  for (int waited = 0; waited < 500 && !fs::exists(opened); ++waited)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(readFile(opened), "--new-window|https://example.invalid/dl?v=1.01&x=%s|") << "only the web link was opened";
}

}  // namespace
