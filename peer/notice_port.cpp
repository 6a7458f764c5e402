#include "peer/notice_port.h"

#include "peer/wire_constants.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace peer {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds longestConnection{5};
constexpr DWORD longestWaitMs = 100; // limits how long a receiving thread takes to end

// The address of one end of the connection, as isOwnAddress takes it; 0 when it is unknown.
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
    const std::uint32_t remote = addressOf(socket, &getpeername);
    return remote != 0 && isOwnAddress(remote, addressOf(socket, &getsockname));
}

// Also makes the socket nonblocking.
bool announceTraffic(const OwnSocket& socket, long kinds, const NoticeListener& listener)
{
    return WSAEventSelect(socket.get(), listener.traffic.get(), kinds) == 0;
}

void acceptAll(NoticeListener& listener)
{
    for (;;) {
        OwnSocket socket(accept(listener.socket.get(), nullptr, nullptr));
        if (!socket.isOpen())
            return;
        if (!isOfThisComputer(socket))
            continue;
        announceTraffic(socket, FD_READ | FD_CLOSE, listener);
        listener.connections.push_back({std::move(socket), Clock::now() + longestConnection});
    }
}

// Resets the connection: an orderly close would keep the port in use after the program has ended.
void giveUp(NoticeConnection& connection)
{
    const linger atOnce{1, 0};
    setsockopt(connection.socket.get(), SOL_SOCKET, SO_LINGER,
               reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    connection.hasEnded = true;
}

void readAvailable(NoticeConnection& connection)
{
    constexpr size_t mostBytes = longestNoticeBytes + 1; // shows that it is too long
    std::array<char, mostBytes> piece;
    while (connection.bytes.size() < mostBytes) {
        const auto free = static_cast<int>(mostBytes - connection.bytes.size());
        const int got = recv(connection.socket.get(), piece.data(), free, 0);
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

// Waits until a connection arrives, brings bytes or ends. For an event rather than by polling: Wine
// never closes a socket that was polled when its process was ended by force, so the port would stay
// in use.
void waitForTraffic(const NoticeListener& listener)
{
    WaitForSingleObject(listener.traffic.get(), longestWaitMs);
}

} // namespace

bool isOwnAddress(std::uint32_t remote, std::uint32_t local)
{
    constexpr std::uint32_t loopback = 127;
    return remote == local || remote >> 24 == loopback;
}

sockaddr_in hostsTarget()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(noticePort);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const hostent* own = gethostbyname("");
    if (own != nullptr && own->h_addrtype == AF_INET && own->h_addr_list[0] != nullptr)
        std::memcpy(&address.sin_addr, own->h_addr_list[0], sizeof address.sin_addr);
    return address;
}

int openNoticePort(NoticeListener& listener)
{
    listener.socket = OwnSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    SOCKET listening = listener.socket.get();
    const BOOL isExclusive = TRUE;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(noticePort);
    const bool isOpen =
        listener.socket.isOpen() &&
        setsockopt(listening, SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                   reinterpret_cast<const char*>(&isExclusive), sizeof isExclusive) == 0 &&
        bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        listen(listening, SOMAXCONN) == 0 && announceTraffic(listener.socket, FD_ACCEPT, listener);
    return isOpen ? 0 : WSAGetLastError();
}

// Connections are accepted and read in the order in which they came, each as far as its bytes have
// arrived, so the notices of one host keep their order.
std::vector<std::string> receiveNotices(NoticeListener& listener)
{
    waitForTraffic(listener);
    acceptAll(listener);
    std::for_each(listener.connections.begin(), listener.connections.end(), readAvailable);
    std::vector<std::string> lines;
    for (NoticeConnection& connection : listener.connections)
        if (connection.hasEnded)
            lines.push_back(std::move(connection.bytes));
    std::erase_if(listener.connections,
                  [](const NoticeConnection& connection) { return connection.hasEnded; });
    return lines;
}

} // namespace peer
