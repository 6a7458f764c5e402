#include "companion/network_thread.h"

#include <winsock2.h>

#include <cstdio>

namespace torvapdm {

namespace {

constexpr u_short greetingPort = 20248;
constexpr int backlog = 10;

void greet(SOCKET connection, const sockaddr_in& peer)
{
    char greeting[512];
    const int length =
        std::snprintf(greeting, sizeof greeting, "Your IP is %s\r\n", inet_ntoa(peer.sin_addr));
    send(connection, greeting, length, 0);
    closesocket(connection);
}

[[noreturn]] void serve(SOCKET listening)
{
    for (;;) {
        sockaddr_in peer{};
        int peerSize = sizeof peer;
        greet(accept(listening, reinterpret_cast<sockaddr*>(&peer), &peerSize), peer);
    }
}

} // namespace

// The sockets library stays started. Nothing waits for the thread.
UINT __cdecl networkThread(LPVOID)
{
    WSADATA data{};
    if (WSAStartup(MAKEWORD(1, 1), &data) != 0)
        return 0;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(greetingPort);
    const SOCKET listening = socket(AF_INET, SOCK_STREAM, 0);
    if (listening == INVALID_SOCKET)
        return 0;
    // Quirk Q11: without a bind to the address above, listen fails and the thread ends. A bind
    // would open port 20248 to the network.
    (void)address;
    if (listen(listening, backlog) != 0)
        return 0;
    serve(listening);
}

} // namespace torvapdm
