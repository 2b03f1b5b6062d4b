// The update notice: once per start a worker thread asks the maker's web server for the newest version
// number and a download address (plain HTTP/1.0) and, when the number is greater than this module's "1.0",
// shows the address as a link in dialog 4007. A failed check is silent; the protocol says what happened.
//
// The server is the [Platform] setting UpdateServer=host:port of the user's settings file, else the maker's
// web server on port 80.
#pragma once

#include <cstddef>
#include <string>

struct ViraUpdateServer {
  std::string host;
  int port = 80;
};

// What the version file said: whether its number is greater than 1.0, and the download address as received
// (line ending included), the home page when the file has no second line.
struct ViraVersionReply {
  bool newer = false;
  std::string address;
};

inline constexpr const char* kViraUpdateHost = "www.halvern-optik.de";
inline constexpr const char* kViraHomePage = "https://www.halvern-optik.de/";
// A version file is two short lines. A reply that grows beyond this many bytes (a header that never ends, a
// line without end) is not one: reading stops there, and what was read so far stands.
inline constexpr std::size_t kViraMaxReplyBytes = 64 * 1024;

ViraUpdateServer ViraUpdateServerSetting();

// The leading decimal number of a line ("1.01\r\n" gives 1.01), 0.0 when it starts with none. The point is
// the decimal separator whatever the user's locale says.
double ViraLeadingNumber(const std::string& line);

// The exchange with the server: connects, sends the request and reads the reply line by line into `reply`
// (which keeps what it held when nothing in the reply changes it). Throws the socket layer's SocketError when
// the server cannot be reached.
void ViraAskForVersion(const ViraUpdateServer& server, ViraVersionReply& reply);

// The worker thread: the exchange, then the dialog when a newer version exists. Returns 1.
unsigned CheckViraCadtoolsVersionThread(void* parameter);
