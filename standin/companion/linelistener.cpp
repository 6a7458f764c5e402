#include "linelistener.h"

#include "decisions/eventtext.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <memory>
#include <utility>
#include <winsock2.h>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

constexpr u_short port = 4559;
constexpr std::size_t mostBytes = 1024;
constexpr std::chrono::seconds longestConnection{5};

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
    // Set when a connection comes, brings bytes or ends; reset by the wait for it.
    OwnHandle traffic{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

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
        WSAEventSelect(listening, opened.traffic.get(), FD_ACCEPT) == 0 &&
        listen(listening, SOMAXCONN) == 0;
    return isOpen ? 0 : WSAGetLastError();
}

void acceptAll(const Port& from, std::vector<Connection>& connections)
{
    for (;;) {
        OwnSocket socket(accept(from.socket.get(), nullptr, nullptr));
        if (!socket.isOpen()) {
            return;
        }
        WSAEventSelect(socket.get(), from.traffic.get(), FD_READ | FD_CLOSE);
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

// Until the first connection has to be given up.
DWORD longestWaitMs(const std::vector<Connection>& connections)
{
    if (connections.empty()) {
        return INFINITE;
    }
    // Each has the same time, so the oldest is the first to be given up.
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(connections.front().end - Clock::now());
    return static_cast<DWORD>(std::max<std::int64_t>(left.count(), 0));
}

// False when the thread has to end.
bool waitForTraffic(HANDLE stop, HANDLE traffic, DWORD longestMs)
{
    const HANDLE events[] = {stop, traffic};
    return WaitForMultipleObjects(static_cast<DWORD>(std::size(events)), events, FALSE,
                                  longestMs) != WAIT_OBJECT_0;
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
void work(LineListener& listener, const Port& from, HWND window, UINT message)
{
    std::vector<Connection> connections;
    while (waitForTraffic(listener.stop.get(), from.traffic.get(), longestWaitMs(connections))) {
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

} // namespace

void startListening(LineListener& listener, EventLog& log, HWND window, UINT message)
{
    auto opened = std::make_unique<Port>();
    if (const int error = openPort(*opened); error != 0) {
        logEvent(log, L"port-taken", numberField(L"port", port) + numberField(L"error", error));
        return;
    }
    listener.stop.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    listener.worker = std::thread([&listener, opened = std::move(opened), window, message] {
        try {
            work(listener, *opened, window, message);
        } catch (...) {
            // Out of memory: nothing more is received, the window goes on.
        }
    });
}

void stopListening(LineListener& listener)
{
    if (listener.worker.joinable()) {
        SetEvent(listener.stop.get());
        listener.worker.join();
    }
}

std::vector<std::string> takeLines(LineListener& listener)
{
    const std::lock_guard lock(listener.mutex);
    return std::exchange(listener.arrived, {});
}

} // namespace companion
