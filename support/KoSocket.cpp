#include "support/KoSocket.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cerrno>
#include <cstring>

namespace {

// Live socket objects. Windows starts its socket library with the first and cleans it up after the last;
// here there is nothing to start, but the count still tells a test that every socket was released.
std::atomic<int> gLiveSockets{0};

// Retries a call that a signal interrupted: that is no failure of the connection.
template <typename Call>
long Retrying(Call call)
{
    long result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

int NewTcpSocket()
{
    const int handle = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0)
        throw SocketError("INVALID_SOCKET");
    return handle;
}

}  // namespace

struct Socket::Shared {
    int handle = -1;
    int references = 1;
};

Socket::Socket() : m_shared(new Shared{NewTcpSocket(), 1}) { ++gLiveSockets; }

Socket::Socket(int handle) : m_shared(new Shared{handle, 1}) { ++gLiveSockets; }

Socket::Socket(const Socket& other) : m_shared(other.m_shared)
{
    ++m_shared->references;
    ++gLiveSockets;
}

Socket& Socket::operator=(const Socket& other)
{
    if (m_shared == other.m_shared)
        return *this;
    ++other.m_shared->references;
    Release();
    m_shared = other.m_shared;
    return *this;
}

Socket::~Socket()
{
    Release();
    --gLiveSockets;
}

void Socket::Release()
{
    if (--m_shared->references == 0) {
        if (m_shared->handle >= 0)
            ::close(m_shared->handle);
        delete m_shared;
    }
    m_shared = nullptr;
}

int Socket::Handle() const { return m_shared->handle; }

void Socket::Close()
{
    // The handle is forgotten by every copy, so that a handle number the system hands out again is never
    // closed a second time.
    if (m_shared->handle >= 0)
        ::close(m_shared->handle);
    m_shared->handle = -1;
}

int Socket::LiveCount() { return gLiveSockets.load(); }

std::string Socket::ReceiveAvailable()
{
    std::string gathered;
    const int handle = Handle();
    for (;;) {
        int ready = 0;
        if (::ioctl(handle, FIONREAD, &ready) != 0 || ready <= 0)
            break;
        char buffer[1024];
        const std::size_t wanted = std::min<std::size_t>(static_cast<std::size_t>(ready), sizeof buffer);
        const long got = Retrying([&] { return ::recv(handle, buffer, wanted, 0); });
        if (got < 1)
            break;
        gathered.append(buffer, static_cast<std::size_t>(got));
    }
    return gathered;
}

std::string Socket::ReceiveLine() { return ReceiveLine(std::string::npos); }

std::string Socket::ReceiveLine(std::size_t maxBytes)
{
    std::string line;
    const int handle = Handle();
    while (line.size() < maxBytes) {
        char byte = 0;
        const long got = Retrying([&] { return ::recv(handle, &byte, 1, 0); });
        if (got == 0)
            return line;
        if (got < 0)
            return {};
        line += byte;
        if (byte == '\n')
            break;
    }
    return line;
}

void Socket::SendLine(const std::string& text) { SendBytes(text + '\n'); }

long Socket::SendBytes(const std::string& text)
{
    const int handle = Handle();
    return Retrying([&] { return ::send(handle, text.data(), text.size(), MSG_NOSIGNAL); });
}

SocketClient::SocketClient(const std::string& host, int port)
{
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int resolved = ::getaddrinfo(host.c_str(), nullptr, &hints, &found);
    if (resolved != 0 || found == nullptr) {
        const std::string reason = resolved == EAI_SYSTEM ? std::strerror(errno) : ::gai_strerror(resolved);
        if (found != nullptr)
            ::freeaddrinfo(found);
        throw SocketError(reason);
    }
    sockaddr_in address{};
    std::memcpy(&address, found->ai_addr, std::min<std::size_t>(sizeof address, found->ai_addrlen));
    ::freeaddrinfo(found);
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    const long connected = Retrying(
        [&] { return ::connect(Handle(), reinterpret_cast<const sockaddr*>(&address), sizeof address); });
    if (connected != 0)
        throw SocketError(std::strerror(errno));
}

SocketServer::SocketServer(int port, int backlog, int nonBlocking)
{
    const int handle = Handle();
    int on = 1;
    // Windows lets a server bind again at once after a restart; without this the port stays taken for a while.
    ::setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (nonBlocking == 1 && ::ioctl(handle, FIONBIO, &on) != 0) {
        Close();
        throw SocketError("INVALID_SOCKET");
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (::bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        Close();
        throw SocketError("INVALID_SOCKET");
    }
    ::listen(handle, backlog);
}

std::unique_ptr<Socket> SocketServer::Accept()
{
    const long accepted = Retrying([&] { return ::accept4(Handle(), nullptr, nullptr, SOCK_CLOEXEC); });
    if (accepted >= 0)
        return std::make_unique<Socket>(static_cast<int>(accepted));
    if (errno == EWOULDBLOCK || errno == EAGAIN)
        return nullptr;
    throw SocketError("Invalid Socket");
}

int SocketServer::LocalPort() const
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (::getsockname(Handle(), reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return 0;
    return ntohs(address.sin_port);
}

SocketSelect::SocketSelect(const Socket& first, const Socket* second, int kind)
{
    m_handles[m_count++] = first.Handle();
    if (second != nullptr && second->Handle() != first.Handle() && m_count < kMaxSockets)
        m_handles[m_count++] = second->Handle();
    // poll rather than select: a handle number above the select set's fixed size would overrun it.
    pollfd watched[kMaxSockets] = {};
    for (std::size_t i = 0; i < m_count; ++i)
        watched[i] = pollfd{m_handles[i], POLLIN, 0};
    const timespec pollOnce{0, 1000};
    const int ready = ::ppoll(watched, m_count, kind == kPoll ? &pollOnce : nullptr, nullptr);
    if (ready < 0)
        throw SocketError("Error in select");
    for (std::size_t i = 0; i < m_count; ++i)
        m_readable[i] = (watched[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0;
}

bool SocketSelect::IsSet(const Socket& socket) const
{
    for (std::size_t i = 0; i < m_count; ++i)
        if (m_handles[i] == socket.Handle())
            return m_readable[i];
    return false;
}
