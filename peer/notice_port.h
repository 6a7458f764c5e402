// TCP port 4559, on which hosts' add-ins send their notices.
#pragma once

#include "peer/handle.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace peer {

struct NoticeConnection {
    OwnSocket socket;
    std::chrono::steady_clock::time_point end; // when it is given up
    std::string bytes{};
    bool hasEnded = false;
};

// For one thread. Winsock is started first and cleaned up last.
struct NoticeListener {
    SocketsLibrary library;
    OwnHandle traffic{CreateEventW(nullptr, FALSE, FALSE, nullptr)}; // set when there is some
    OwnSocket socket{INVALID_SOCKET};
    std::vector<NoticeConnection> connections{};
};

// True when a connection comes from this computer: its remote address is a loopback address,
// 127.x.x.x, or equals its local address. IPv4, the first number in the highest bits.
bool isOwnAddress(std::uint32_t remote, std::uint32_t local);

// Where hosts send notices: the computer's first address. Winsock must have been started.
sockaddr_in hostsTarget();

// Opens the port exclusively on all IPv4 addresses. 0 or an error code; another program may have
// the port.
int openNoticePort(NoticeListener& listener);

// All bytes of each connection that has ended since the last call, in the order in which they
// came; waits for traffic for at most 100 ms. A connection ends when the sender closes it, after
// 1024 bytes or after five seconds; a slow one delays no other. A connection from another computer
// is closed without being read.
std::vector<std::string> receiveNotices(NoticeListener& listener);

} // namespace peer
