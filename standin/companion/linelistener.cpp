#include "linelistener.h"

#include "decisions/eventtext.h"
#include "decisions/ownaddress.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <utility>
#include <winsock2.h>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

constexpr u_short port = 4559;
constexpr std::size_t mostBytes = 1024;
constexpr std::chrono::seconds longestConnection{5};
constexpr INT lookEveryMs = 100; // bounds how long the program's end waits for the thread
// The sockets of a program that has just ended may stay open for a moment longer than it.
constexpr std::chrono::seconds quietTries{1};

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
        if (isOpen()) {
            closesocket(value_);
        }
    }
    SOCKET get() const { return value_; }
    bool isOpen() const { return value_ != INVALID_SOCKET; }

private:
    SOCKET value_;
};

struct Connection {
    OwnSocket socket;
    Clock::time_point end; // it is given up then
    std::string bytes{};
    bool hasEnded = false;
};

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

// What the thread holds. The library is started first and ended last.
struct Port {
    SocketsLibrary library;
    OwnSocket socket{INVALID_SOCKET};
};

bool makeNonblocking(const OwnSocket& socket)
{
    u_long isNonblocking = 1;
    return ioctlsocket(socket.get(), static_cast<long>(FIONBIO), &isNonblocking) == 0;
}

// 0, or the error code of what went wrong.
int openPort(Port& opened)
{
    opened.socket = OwnSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    SOCKET listening = opened.socket.get();
    const BOOL isExclusive = TRUE;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(port);
    const bool isOpen =
        opened.socket.isOpen() &&
        setsockopt(listening, SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                   reinterpret_cast<const char*>(&isExclusive), sizeof isExclusive) == 0 &&
        bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        listen(listening, SOMAXCONN) == 0 && makeNonblocking(opened.socket);
    return isOpen ? 0 : WSAGetLastError();
}

// The address of one end of the connection, as `isOwnAddress` takes it; 0 when it is not known.
std::uint32_t addressOf(const OwnSocket& socket, decltype(&getsockname) end)
{
    sockaddr_in address{};
    int size = sizeof address;
    if (end(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        return 0;
    }
    return ntohl(address.sin_addr.s_addr);
}

bool isOfThisComputer(const OwnSocket& socket)
{
    const std::uint32_t peer = addressOf(socket, &getpeername);
    return peer != 0 && isOwnAddress(peer, addressOf(socket, &getsockname));
}

void acceptAll(const Port& from, std::vector<Connection>& connections)
{
    for (;;) {
        OwnSocket socket(accept(from.socket.get(), nullptr, nullptr));
        if (!socket.isOpen()) {
            return;
        }
        if (!isOfThisComputer(socket)) {
            continue;
        }
        makeNonblocking(socket);
        connections.push_back({std::move(socket), Clock::now() + longestConnection});
    }
}

// Resets the connection: closed in order, it would keep the port in use after the program's end.
void giveUp(Connection& connection)
{
    const linger atOnce{1, 0};
    setsockopt(connection.socket.get(), SOL_SOCKET, SO_LINGER,
               reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    connection.hasEnded = true;
}

void readAvailable(Connection& connection)
{
    std::array<char, mostBytes> piece;
    while (connection.bytes.size() < mostBytes) {
        const auto room = static_cast<int>(mostBytes - connection.bytes.size());
        const int got = recv(connection.socket.get(), piece.data(), room, 0);
        if (got <= 0) {
            connection.hasEnded = got == 0 || WSAGetLastError() != WSAEWOULDBLOCK;
            break;
        }
        connection.bytes.append(piece.data(), static_cast<std::size_t>(got));
    }
    const bool isFull = connection.bytes.size() == mostBytes;
    if (!connection.hasEnded && (isFull || Clock::now() >= connection.end)) {
        giveUp(connection);
    }
}

// Until a connection comes, brings bytes or ends, at most for one look's time. A poll, because a
// notice of such an event can be lost where another one came while it was dealt with.
void waitForTraffic(const Port& from, const std::vector<Connection>& connections)
{
    std::vector<WSAPOLLFD> sockets{{from.socket.get(), POLLRDNORM, 0}};
    for (const Connection& connection : connections) {
        sockets.push_back({connection.socket.get(), POLLRDNORM, 0});
    }
    WSAPoll(sockets.data(), static_cast<ULONG>(sockets.size()), lookEveryMs);
}

void handOver(LineListener& listener, std::vector<Connection>& connections)
{
    const std::lock_guard lock(listener.mutex);
    for (Connection& connection : connections) {
        if (connection.hasEnded) {
            listener.arrived.push_back(std::move(connection.bytes));
        }
    }
}

// Connections are accepted and read in the order in which they came, each as far as its bytes are
// there, so lines that a host sends one after the other also end one after the other.
void work(LineListener& listener, const Port& from, const std::stop_token& stop, HWND window,
          UINT message)
{
    std::vector<Connection> connections;
    while (!stop.stop_requested()) {
        waitForTraffic(from, connections);
        acceptAll(from, connections);
        std::for_each(connections.begin(), connections.end(), readAvailable);
        handOver(listener, connections);
        const auto ended = std::erase_if(
            connections, [](const Connection& connection) { return connection.hasEnded; });
        if (ended != 0) {
            PostMessageW(window, message, 0, 0);
        }
    }
}

void logPortTaken(EventLog& log, int error)
{
    logEvent(log, L"port-taken", numberField(L"port", port) + numberField(L"error", error));
}

// Tries until the port is open. False when the thread has to end first.
bool waitForPort(Port& opened, int error, const std::stop_token& stop, EventLog& log)
{
    const Clock::time_point quietUntil = Clock::now() + quietTries;
    bool isLogged = false;
    while (error != 0 && !stop.stop_requested()) {
        if (!isLogged && Clock::now() >= quietUntil) {
            logPortTaken(log, error);
            isLogged = true;
        }
        Sleep(lookEveryMs);
        error = openPort(opened);
    }
    if (error == 0 && isLogged) {
        logEvent(log, L"port-open", numberField(L"port", port));
    }
    return error == 0;
}

} // namespace

void startListening(LineListener& listener, EventLog& log, HWND window, UINT message)
{
    auto opened = std::make_unique<Port>();
    const int error = openPort(*opened);
    listener.worker = std::jthread([&listener, &log, error, opened = std::move(opened), window,
                                    message](const std::stop_token& stop) {
        try {
            if (waitForPort(*opened, error, stop, log)) {
                work(listener, *opened, stop, window, message);
            }
        } catch (...) {
            // Out of memory: nothing more is received, the window goes on.
        }
    });
}

void stopListening(LineListener& listener)
{
    listener.worker.request_stop();
    if (listener.worker.joinable()) {
        listener.worker.join();
    }
}

std::vector<std::string> takeLines(LineListener& listener)
{
    const std::lock_guard lock(listener.mutex);
    return std::exchange(listener.arrived, {});
}

} // namespace companion
