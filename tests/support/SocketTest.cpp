// Line transfer over the socket classes, shared handles, and the failures a caller has to survive. Every
// connection goes to 127.0.0.1.
#include "support/KoSocket.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "tests/support/LoopbackServer.h"

namespace {

std::string ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const SocketError& e) {
    return e.what();
  }
  return "nothing thrown";
}

bool IsOpen(int handle) { return ::fcntl(handle, F_GETFD) != -1; }

// A connection between a SocketServer and a SocketClient in one thread: the non-blocking server answers
// none until the client has connected.
struct Pair {
  SocketServer server{0, 5, 1};
  std::unique_ptr<Socket> accepted;
  std::unique_ptr<SocketClient> client;
  Pair() {
    EXPECT_EQ(server.Accept(), nullptr) << "nobody is waiting yet";
    client = std::make_unique<SocketClient>("127.0.0.1", server.LocalPort());
    for (int tries = 0; tries < 500 && !accepted; ++tries) {
      accepted = server.Accept();
      if (!accepted) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  }
};

TEST(Socket, LinesEndAtALineFeedOrWhereThePeerClosed) {
  Pair pair;
  ASSERT_TRUE(pair.accepted);
  pair.accepted->SendLine("GET /x HTTP/1.0");
  pair.accepted->SendLine("");
  EXPECT_EQ(pair.accepted->SendBytes("1.01\r\nabcdefgh\nabc"), 18);
  pair.accepted->Close();
  EXPECT_EQ(pair.client->ReceiveLine(), "GET /x HTTP/1.0\n");
  EXPECT_EQ(pair.client->ReceiveLine(), "\n") << "an empty line is one line feed, no carriage return";
  EXPECT_EQ(pair.client->ReceiveLine(), "1.01\r\n");
  EXPECT_EQ(pair.client->ReceiveLine(4), "abcd") << "the caller's limit holds";
  EXPECT_EQ(pair.client->ReceiveLine(), "efgh\n");
  EXPECT_EQ(pair.client->ReceiveLine(), "abc");
  EXPECT_EQ(pair.client->ReceiveLine(), "");
}

TEST(Socket, AvailableBytesNeverWaitAndSelectionSeesThem) {
  Pair pair;
  ASSERT_TRUE(pair.accepted);
  EXPECT_EQ(pair.client->ReceiveAvailable(), "");
  EXPECT_FALSE(SocketSelect(*pair.client, pair.client.get(), SocketSelect::kPoll).IsSet(*pair.client));
  const std::string big(3000, 'x');
  pair.accepted->SendBytes(big);
  const SocketSelect ready(*pair.client, &pair.server, 0);  // waits until something can be read
  EXPECT_TRUE(ready.IsSet(*pair.client));
  EXPECT_FALSE(ready.IsSet(pair.server));
  std::string got;
  while (got.size() < big.size()) got += pair.client->ReceiveAvailable();
  EXPECT_EQ(got, big) << "more than one read of 1024 bytes";
}

TEST(Socket, CopiesShareOneHandleClosedByTheLastCopy) {
  const int before = Socket::LiveCount();
  int handle = -1;
  {
    Socket first;
    handle = first.Handle();
    {
      Socket copy(first);
      Socket assigned;
      assigned = copy;
      EXPECT_EQ(copy.Handle(), handle);
      EXPECT_EQ(assigned.Handle(), handle);
      EXPECT_EQ(Socket::LiveCount(), before + 3);
    }
    EXPECT_TRUE(IsOpen(handle)) << "the first copy is still there";
    first = first;
    EXPECT_TRUE(IsOpen(handle));
  }
  EXPECT_FALSE(IsOpen(handle));
  EXPECT_EQ(Socket::LiveCount(), before);

  // Close() ends the handle for every copy.
  Socket closed;
  const Socket sharer(closed);
  closed.Close();
  EXPECT_EQ(sharer.Handle(), -1);
}

TEST(Socket, FailuresCarryTheirTexts) {
  const int refused = LoopbackServer::ClosedPort();
  EXPECT_EQ(ErrorOf([&] { SocketClient("127.0.0.1", refused); }), std::strerror(ECONNREFUSED));

  SocketServer taken(0, 1, 0);
  EXPECT_EQ(ErrorOf([&] { SocketServer(taken.LocalPort(), 1, 0); }), "INVALID_SOCKET");

  // A peer that resets the connection in the middle of a line: the partial line is dropped.
  LoopbackServer resetting([](int connection) {
    LoopbackServer::Send(connection, "abc");
    const linger abort{1, 0};
    ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
  });
  SocketClient client("127.0.0.1", resetting.Port());
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(client.ReceiveLine(), "");

  // Sending to a peer that has gone does not end the process.
  client.SendLine("still here");
  client.SendBytes(std::string(100000, 'y'));
}

}  // namespace
