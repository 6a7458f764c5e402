// TCP port 4559, on which the lines of hosts' add-ins arrive.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>
#include <winsock2.h>

namespace companion {

inline constexpr u_short linePortNumber = 4559;

// A socket that is closed once. Its one empty value is INVALID_SOCKET.
class OwnSocket {
public:
    explicit OwnSocket(SOCKET value) : value_(value) {}
    OwnSocket(OwnSocket&& other) noexcept : value_(std::exchange(other.value_, INVALID_SOCKET)) {}
    OwnSocket& operator=(OwnSocket&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    ~OwnSocket()
    {
        if (isOpen())
            closesocket(value_);
    }
    SOCKET get() const { return value_; }
    bool isOpen() const { return value_ != INVALID_SOCKET; }

private:
    SOCKET value_;
};

// The sockets library, usable for its lifetime.
struct SocketsLibrary {
    SocketsLibrary()
    {
        WSADATA data{};
        WSAStartup(MAKEWORD(2, 2), &data);
    }
    ~SocketsLibrary() { WSACleanup(); }
    SocketsLibrary(const SocketsLibrary&) = delete;
    SocketsLibrary& operator=(const SocketsLibrary&) = delete;
};

struct LineConnection {
    OwnSocket socket;
    std::chrono::steady_clock::time_point end; // it is given up then
    std::string bytes{};
    bool hasEnded = false;
};

// For one thread. The library is started first and ended last.
struct LinePort {
    SocketsLibrary library;
    OwnSocket socket{INVALID_SOCKET};
    std::vector<LineConnection> connections{};
};

bool makeNonblocking(const OwnSocket& socket);

// Opens the port on all IPv4 addresses, for this program alone. 0, or the error code of what went
// wrong: another program may have the port.
int openLinePort(LinePort& port);

// All bytes of each connection that has ended since the last call, in the order in which they
// came; waits for traffic, for at most 100 ms. A connection ends by its peer, after 1024 bytes or
// after five seconds; those that are slow hold up no other. One that comes from another computer is
// closed unread.
std::vector<std::string> receiveLines(LinePort& port);

} // namespace companion
