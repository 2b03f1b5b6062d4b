#pragma once
// Line-oriented TCP over the system's sockets: a Socket shares its handle among its copies (the handle is
// closed when the last copy goes), a SocketClient connects to a host name and port, a SocketServer binds,
// listens and accepts, and a SocketSelect waits until sockets can be read.
//
// Failures of creation, resolution, connection, binding, accepting and waiting throw SocketError with a
// fixed text ("INVALID_SOCKET", "Invalid Socket", "Error in select") or the system's text for the failure.
// Receiving reports trouble by returning short or empty strings; sending is not checked. Sending never
// raises SIGPIPE: a peer that hangs up must not end the process.

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

class SocketError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Socket {
public:
    // A new TCP socket (IPv4, stream); throws "INVALID_SOCKET" when the system refuses one.
    Socket();
    // Takes over an open handle (an accepted connection).
    explicit Socket(int handle);
    Socket(const Socket& other);
    Socket& operator=(const Socket& other);
    virtual ~Socket();

    int Handle() const;
    // Closes the handle for every copy at once; the copies stay valid objects that can no longer transfer.
    void Close();

    // What has arrived and can be read without waiting (possibly nothing).
    std::string ReceiveAvailable();
    // Bytes up to and including a line feed; what came before an orderly close of the peer; empty on a
    // receive error (a partial line is dropped).
    std::string ReceiveLine();
    // The same, but stops after `maxBytes` bytes: a result of that length without a line feed at its end
    // means the line is longer than the caller is willing to hold.
    std::string ReceiveLine(std::size_t maxBytes);
    // Sends the text and one line feed (no carriage return) in one piece; the outcome is not checked.
    void SendLine(const std::string& text);
    // Sends the text as it is; the system's result (bytes sent, or -1).
    long SendBytes(const std::string& text);

    // Live Socket objects in the process (copies included).
    static int LiveCount();

private:
    struct Shared;
    void Release();
    Shared* m_shared = nullptr;
};

class SocketClient : public Socket {
public:
    // Resolves `host` (IPv4, the first address) and connects. Throws the system's text when the name cannot
    // be resolved or the connection fails.
    SocketClient(const std::string& host, int port);
};

class SocketServer : public Socket {
public:
    // Listens on `port` of every local address (0: a free port, see LocalPort()). With nonBlocking == 1 the
    // socket does not block, so Accept() answers at once. Throws "INVALID_SOCKET" when the socket cannot be
    // made or bound.
    SocketServer(int port, int backlog, int nonBlocking);
    // The next connection; none when the socket does not block and nobody is waiting. Throws
    // "Invalid Socket" on any other failure.
    std::unique_ptr<Socket> Accept();
    int LocalPort() const;
};

// The sockets among one or two that can be read. Kind 1 polls (returns at once); any other kind waits until
// one of them can be read. Throws "Error in select" when the wait fails.
class SocketSelect {
public:
    static constexpr int kPoll = 1;
    static constexpr std::size_t kMaxSockets = 64;

    SocketSelect(const Socket& first, const Socket* second, int kind);
    bool IsSet(const Socket& socket) const;

private:
    int m_handles[kMaxSockets] = {};
    bool m_readable[kMaxSockets] = {};
    std::size_t m_count = 0;
};
