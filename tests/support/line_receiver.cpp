#include "support/line_receiver.h"

#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>

namespace testing_support {

namespace {

// True when the socket has something to take within the time.
bool isReadable(SOCKET socket, unsigned milliseconds)
{
    fd_set sockets;
    FD_ZERO(&sockets);
    FD_SET(socket, &sockets);
    timeval time = {static_cast<long>(milliseconds / 1000),
                    static_cast<long>(milliseconds % 1000 * 1000)};
    return select(0, &sockets, nullptr, nullptr, &time) > 0;
}

// A socket that listens on the port; the invalid one when that is taken.
SOCKET listenOnPort()
{
    const SOCKET listening = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(4559);
    if (bind(listening, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
        listen(listening, 16) == 0)
        return listening;
    closesocket(listening);
    return INVALID_SOCKET;
}

} // namespace

LineReceiver::LineReceiver()
{
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    // The sockets of a program that was just ended may stay open for a moment.
    if (!waitUntil([this] { return (listening_ = listenOnPort()) != INVALID_SOCKET; })) {
        std::fprintf(stderr, "cannot listen on port 4559: error %d\n", WSAGetLastError());
        std::exit(99);
    }
}

LineReceiver::~LineReceiver()
{
    closesocket(listening_);
    WSACleanup();
}

SOCKET LineReceiver::acceptNext() const
{
    return isReadable(listening_, generousMs) ? accept(listening_, nullptr, nullptr)
                                              : INVALID_SOCKET;
}

std::optional<std::string> LineReceiver::nextConnection() const
{
    const SOCKET connection = acceptNext();
    if (connection == INVALID_SOCKET)
        return std::nullopt;
    std::string bytes;
    char piece[512];
    for (int size; (size = recv(connection, piece, sizeof piece, 0)) > 0;)
        bytes.append(piece, static_cast<size_t>(size));
    closesocket(connection);
    return bytes;
}

bool LineReceiver::isIdle() const
{
    return !isReadable(listening_, 0);
}

bool LineReceiver::hangUpOnNext() const
{
    const SOCKET connection = acceptNext();
    closesocket(connection);
    return connection != INVALID_SOCKET;
}

} // namespace testing_support
