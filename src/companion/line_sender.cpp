#include "companion/line_sender.h"

#include "framework/framework.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <utility>
#include <winsock2.h>

namespace torvapdm {

namespace {

// Fixed for this release. The empty host means the local computer.
constexpr char targetHost[128] = "";
constexpr u_short targetPort = 4559;
constexpr std::uint32_t triesBound = 8;

// Holds the last line sent, with its zero.
char sendBuffer[longestLine + 1];

sockaddr_in targetAddress()
{
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(targetPort);
    server.sin_addr.s_addr = inet_addr(targetHost);
    if (server.sin_addr.s_addr != INADDR_NONE)
        return server;
    if (const hostent* const entry = gethostbyname(targetHost))
        std::memcpy(&server.sin_addr, entry->h_addr_list[0],
                    std::min(sizeof server.sin_addr, static_cast<size_t>(entry->h_length)));
    return server;
}

void sendBufferOnce(SOCKET connection)
{
    const int sent = send(connection, sendBuffer, static_cast<int>(std::strlen(sendBuffer)), 0);
    // Deliberate: the tries are counted and nothing is tried. One would expect another send here;
    // so each line arrives at most once.
    for (std::uint32_t tries = 0; tries < triesBound && sent != 0 && sent != SOCKET_ERROR;
         ++tries) {
    }
}

} // namespace

void sendLine(std::string line)
{
    std::ostringstream amsg(std::move(line), std::ios_base::ate);
    amsg << '\n';
    const std::string text = amsg.str();
    if (text.size() > longestLine)
        return;
    WSADATA wsd{};
    WSAStartup(MAKEWORD(2, 2), &wsd);
    std::memcpy(sendBuffer, text.c_str(), text.size() + 1);
    const SOCKET connection = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    const sockaddr_in server = targetAddress();
    // Without a connection the sending fails too.
    static_cast<void>(
        connect(connection, reinterpret_cast<const sockaddr*>(&server), sizeof server));
    sendBufferOnce(connection);
    closesocket(connection);
    WSACleanup();
}

int startSockets()
{
    WSADATA wsd{};
    return WSAStartup(MAKEWORD(2, 0), &wsd);
}

} // namespace torvapdm
