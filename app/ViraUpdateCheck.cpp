#include "app/ViraUpdateCheck.h"

#include <cctype>
#include <charconv>
#include <exception>

#include "app/CDlgNewVersion.h"
#include "app/CResourceDll.h"
#include "app/CViraCadtoolsV10App.h"
#include "app/ViraLogging.h"
#include "sdk/ui/AfxThread.h"
#include "support/KoConvert.h"
#include "support/KoLog.h"
#include "support/KoModuleLifetime.h"
#include "support/KoSettings.h"
#include "support/KoSocket.h"

ViraUpdateServer ViraUpdateServerSetting() {
  ViraUpdateServer server{kViraUpdateHost, 80};
  const std::optional<std::string> setting = KoReadSetting(kKoPlatformSection, "UpdateServer");
  if (!setting || setting->empty()) return server;
  const std::size_t colon = setting->rfind(':');
  if (colon == std::string::npos) {
    server.host = *setting;
    return server;
  }
  int port = 0;
  const char* first = setting->data() + colon + 1;
  const char* last = setting->data() + setting->size();
  const auto [end, error] = std::from_chars(first, last, port);
  if (colon == 0 || error != std::errc() || end != last || port < 1 || port > 65535) {
    Log(kViraLogLevel, "UpdateServer setting is not host:port: " + *setting);
    return server;
  }
  server.host = setting->substr(0, colon);
  server.port = port;
  return server;
}

double ViraLeadingNumber(const std::string& line) {
  std::size_t at = 0;
  while (at < line.size() && std::isspace(static_cast<unsigned char>(line[at])) != 0) ++at;
  if (at < line.size() && line[at] == '+') ++at;
  double value = 0.0;
  const auto [end, error] = std::from_chars(line.data() + at, line.data() + line.size(), value);
  return error == std::errc() ? value : 0.0;
}

void ViraAskForVersion(const ViraUpdateServer& server, ViraVersionReply& reply) {
  SocketClient client(server.host, server.port);
  // Bare line feeds, no carriage returns: the request the server has always been sent.
  client.SendLine("GET /viracadtoolsversion.txt HTTP/1.0");
  client.SendLine("Host: " + server.host);
  client.SendLine("");
  bool inBody = false;
  int bodyLine = 0;
  std::size_t budget = kViraMaxReplyBytes;
  for (;;) {
    const std::string line = client.ReceiveLine(budget);
    if (line.empty()) break;
    if (line.size() == budget && line.back() != '\n') {
      Log(kViraLogLevel, "CheckViraCadtoolsVersionThread reply too long, ignored from here");
      break;
    }
    budget -= line.size();
    if (inBody) {
      Log(kViraLogLevel, "Line: " + line);
      if (bodyLine == 0 && ViraLeadingNumber(line) > ViraLeadingNumber("1.0")) reply.newer = true;
      if (bodyLine == 1) reply.address = line;
      ++bodyLine;
    }
    // The blank line that ends the header; the status line and the header lines say nothing we need.
    if (line.front() == '\r' || line.front() == '\n') inBody = true;
  }
}

unsigned CheckViraCadtoolsVersionThread(void*) {
  Log(kViraLogLevel, "CheckViraCadtoolsVersionThread start");
  ViraVersionReply reply;
  reply.address = kViraHomePage;
  try {
    ViraAskForVersion(ViraUpdateServerSetting(), reply);
  } catch (const char* text) {
    Log(kViraLogLevel, std::string("CheckViraCadtoolsVersionThread exception1 ") + text);
  } catch (const std::exception& error) {
    Log(kViraLogLevel, std::string("CheckViraCadtoolsVersionThread exception2 ") + error.what());
  } catch (...) {
    Log(kViraLogLevel, "CheckViraCadtoolsVersionThread Unhandeled exception");
  }
  if (reply.newer) {
    Log(kViraLogLevel, "Neue Version von VIRA cadtools!");
    const std::wstring address(AnsiToUni(reply.address).c_str());
    // The dialog belongs to the UI thread; this thread waits until the user has closed it.
    AfxRunOnUiThread([&] {
      CResourceDll resources;
      CDlgNewVersion dialog(nullptr);
      dialog.m_address = address;
      dialog.DoModal();
    });
  }
  Log(kViraLogLevel, "CheckViraCadtoolsVersionThread end");
  return 1;
}

void ViraStartUpdateCheck() {
  // The host may unload the module while the check still waits for the server: the module's code stays
  // mapped for the rest of the process, so the thread never runs on in code that is gone.
  if (!KoKeepModuleLoaded(reinterpret_cast<const void*>(&CheckViraCadtoolsVersionThread))) {
    Log(kViraLogLevel, "CheckViraCadtoolsVersionThread not started: the module cannot be kept loaded");
    return;
  }
  if (!AfxBeginThread(&CheckViraCadtoolsVersionThread, nullptr))
    Log(kViraLogLevel, "CheckViraCadtoolsVersionThread not started: no thread");
}
