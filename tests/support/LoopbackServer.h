// A one-connection TCP server on 127.0.0.1 for tests of code that talks to a server: it listens on a free
// port, accepts one connection on its own thread and hands the connection to the test's behaviour. Nothing
// here ever reaches another address.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

class LoopbackServer {
 public:
  using Behaviour = std::function<void(int connection)>;

  explicit LoopbackServer(Behaviour behaviour) {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(listener_, 4);
    socklen_t length = sizeof address;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this, behaviour] {
      const int connection = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      if (connection < 0) return;
      connection_ = connection;
      behaviour(connection);
      ::close(connection_.exchange(-1));
    });
  }

  // Wakes a behaviour that still waits on the connection (a server that never answers) and ends it.
  ~LoopbackServer() {
    stopping_ = true;
    ::shutdown(listener_, SHUT_RDWR);
    if (const int connection = connection_.load(); connection >= 0) ::shutdown(connection, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }

  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  int Port() const { return port_; }
  // For a behaviour that holds the connection open without answering until the test is over.
  void WaitUntilStopped() const {
    while (!stopping_) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }

  // A port on 127.0.0.1 that nobody listens on: connecting to it is refused.
  static int ClosedPort() {
    const int probe = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof address);
    socklen_t length = sizeof address;
    ::getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
    ::close(probe);
    return ntohs(address.sin_port);
  }

  // Reads until `end` has arrived, the peer closes or `limit` bytes are read.
  static std::string ReadUntil(int connection, std::string_view end, std::size_t limit = 65536) {
    std::string got;
    char byte = 0;
    while (got.size() < limit && (end.empty() || !got.ends_with(end)) && ::recv(connection, &byte, 1, 0) == 1)
      got += byte;
    return got;
  }

  static void Send(int connection, std::string_view bytes) {
    ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  }

 private:
  int listener_ = -1;
  int port_ = 0;
  std::atomic<int> connection_{-1};
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};
