#include "tools/zemlink/facts/port_facts.h"

#include "peer/notice_port.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/system.h"

#include <algorithm>
#include <cstring>
#include <iphlpapi.h>

namespace zemlink {
namespace {

using peer::OwnSocket;

constexpr int longestConnectMs = 5000;

// The listening sockets, each with its process; empty when unknown.
std::vector<MIB_TCPROW_OWNER_PID> listeningSockets()
{
    DWORD bytes = 0;
    std::vector<char> table;
    const auto read = [&] {
        return GetExtendedTcpTable(table.data(), &bytes, FALSE, AF_INET,
                                   TCP_TABLE_OWNER_PID_LISTENER, 0);
    };
    DWORD error = read();
    for (int tries = 0; error == ERROR_INSUFFICIENT_BUFFER && tries < 10; ++tries) {
        table.resize(bytes);
        error = read();
    }
    if (error != NO_ERROR || table.size() < sizeof(MIB_TCPTABLE_OWNER_PID))
        return {};
    DWORD count = 0;
    std::memcpy(&count, table.data(), sizeof count);
    std::vector<MIB_TCPROW_OWNER_PID> rows(count);
    std::memcpy(rows.data(), table.data() + offsetof(MIB_TCPTABLE_OWNER_PID, table),
                count * sizeof rows[0]);
    return rows;
}

// The error of the connection attempt; 0 when connected.
int waitForConnection(const OwnSocket& socket)
{
    fd_set writable, failed;
    FD_ZERO(&writable);
    FD_ZERO(&failed);
    FD_SET(socket.get(), &writable);
    FD_SET(socket.get(), &failed);
    timeval longest{longestConnectMs / 1000, 0};
    if (select(0, nullptr, &writable, &failed, &longest) <= 0)
        return WSAETIMEDOUT;
    int error = 0;
    int size = sizeof error;
    getsockopt(socket.get(), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size);
    return error;
}

bool makeNonblocking(const OwnSocket& socket)
{
    u_long isNonblocking = 1;
    return ioctlsocket(socket.get(), static_cast<long>(FIONBIO), &isNonblocking) == 0;
}

int connectionError(const sockaddr_in& target)
{
    const OwnSocket caller(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!caller.isOpen() || !makeNonblocking(caller))
        return WSAGetLastError();
    if (connect(caller.get(), reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0)
        return 0;
    const int error = WSAGetLastError();
    return error == WSAEWOULDBLOCK ? waitForConnection(caller) : error;
}

bool isNoticePort(const MIB_TCPROW_OWNER_PID& row)
{
    return ntohs(static_cast<u_short>(row.dwLocalPort)) == peer::noticePort;
}

bool acceptsAt(const MIB_TCPROW_OWNER_PID& row, const sockaddr_in& target)
{
    return isNoticePort(row) &&
           (row.dwLocalAddr == INADDR_ANY || row.dwLocalAddr == target.sin_addr.s_addr);
}

// What connects to the address reaches the socket that is bound to just this address, else one that
// is bound to all.
int nearness(const MIB_TCPROW_OWNER_PID& row, const sockaddr_in& target)
{
    return acceptsAt(row, target) ? (row.dwLocalAddr == INADDR_ANY ? 1 : 2) : 0;
}

Port holderIn(const std::vector<MIB_TCPROW_OWNER_PID>& sockets, const sockaddr_in& target)
{
    Port port;
    int best = -1;
    for (const MIB_TCPROW_OWNER_PID& row : sockets) {
        if (!isNoticePort(row) || row.dwOwningPid == 0 || nearness(row, target) <= best)
            continue;
        best = nearness(row, target);
        port.holder = row.dwOwningPid;
        port.program = programOf(row.dwOwningPid);
    }
    return port;
}

} // namespace

Port portHolder()
{
    const peer::SocketsLibrary library;
    return holderIn(listeningSockets(), peer::hostsTarget());
}

Port probePort()
{
    const peer::SocketsLibrary library;
    const auto sockets = listeningSockets();
    const sockaddr_in target = peer::hostsTarget();
    Port port = holderIn(sockets, target);
    const bool isListening =
        std::any_of(sockets.begin(), sockets.end(),
                    [&](const MIB_TCPROW_OWNER_PID& row) { return acceptsAt(row, target); });
    // The Companion logs a connection without bytes as an empty notice.
    const int error = isListening ? 0 : connectionError(target);
    port.answer = resultOf(error == 0, static_cast<std::uint32_t>(error));
    return port;
}

} // namespace zemlink
