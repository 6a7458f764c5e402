#include "notice_port.h"

#include "peer/own_address.h"

#include <algorithm>
#include <array>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t mostBytes = 1024;
constexpr std::chrono::seconds longestConnection{5};
constexpr INT lookEveryMs = 100; // bounds how long a receiving thread's end waits for it

// The address of one end of the connection, as `isOwnAddress` takes it; 0 when it is not known.
std::uint32_t addressOf(const OwnSocket& socket, decltype(&getsockname) end)
{
    sockaddr_in address{};
    int size = sizeof address;
    if (end(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return 0;
    return ntohl(address.sin_addr.s_addr);
}

bool isOfThisComputer(const OwnSocket& socket)
{
    const std::uint32_t peer = addressOf(socket, &getpeername);
    return peer != 0 && isOwnAddress(peer, addressOf(socket, &getsockname));
}

void acceptAll(LinePort& port)
{
    for (;;) {
        OwnSocket socket(accept(port.socket.get(), nullptr, nullptr));
        if (!socket.isOpen())
            return;
        if (!isOfThisComputer(socket))
            continue;
        makeNonblocking(socket);
        port.connections.push_back({std::move(socket), Clock::now() + longestConnection});
    }
}

// Resets the connection: closed in order, it would keep the port in use after the program's end.
void giveUp(LineConnection& connection)
{
    const linger atOnce{1, 0};
    setsockopt(connection.socket.get(), SOL_SOCKET, SO_LINGER,
               reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    connection.hasEnded = true;
}

void readAvailable(LineConnection& connection)
{
    std::array<char, mostBytes> piece;
    while (connection.bytes.size() < mostBytes) {
        const auto room = static_cast<int>(mostBytes - connection.bytes.size());
        const int got = recv(connection.socket.get(), piece.data(), room, 0);
        if (got <= 0) {
            connection.hasEnded = got == 0 || WSAGetLastError() != WSAEWOULDBLOCK;
            break;
        }
        connection.bytes.append(piece.data(), static_cast<size_t>(got));
    }
    const bool isFull = connection.bytes.size() == mostBytes;
    if (!connection.hasEnded && (isFull || Clock::now() >= connection.end))
        giveUp(connection);
}

// Until a connection comes, brings bytes or ends, at most for one look's time. A poll, because a
// notice of such an event can be lost where another one came while it was dealt with.
void waitForTraffic(const LinePort& port)
{
    std::vector<WSAPOLLFD> sockets{{port.socket.get(), POLLRDNORM, 0}};
    for (const LineConnection& connection : port.connections)
        sockets.push_back({connection.socket.get(), POLLRDNORM, 0});
    WSAPoll(sockets.data(), static_cast<ULONG>(sockets.size()), lookEveryMs);
}

} // namespace

bool makeNonblocking(const OwnSocket& socket)
{
    u_long isNonblocking = 1;
    return ioctlsocket(socket.get(), static_cast<long>(FIONBIO), &isNonblocking) == 0;
}

int openLinePort(LinePort& port)
{
    port.socket = OwnSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    SOCKET listening = port.socket.get();
    const BOOL isExclusive = TRUE;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(linePortNumber);
    const bool isOpen =
        port.socket.isOpen() &&
        setsockopt(listening, SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                   reinterpret_cast<const char*>(&isExclusive), sizeof isExclusive) == 0 &&
        bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        listen(listening, SOMAXCONN) == 0 && makeNonblocking(port.socket);
    return isOpen ? 0 : WSAGetLastError();
}

// Connections are accepted and read in the order in which they came, each as far as its bytes are
// there, so lines that a host sends one after the other also end one after the other.
std::vector<std::string> receiveLines(LinePort& port)
{
    waitForTraffic(port);
    acceptAll(port);
    std::for_each(port.connections.begin(), port.connections.end(), readAvailable);
    std::vector<std::string> lines;
    for (LineConnection& connection : port.connections)
        if (connection.hasEnded)
            lines.push_back(std::move(connection.bytes));
    std::erase_if(port.connections,
                  [](const LineConnection& connection) { return connection.hasEnded; });
    return lines;
}

} // namespace companion
