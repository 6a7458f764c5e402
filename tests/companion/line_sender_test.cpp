#include "companion/line_sender.h"

#include "companion/network_thread.h"

#include "support/sockets.h"
#include "support/system_calls.h"
#include "dormant/dormant.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace torvapdm;
using namespace testing_support;

namespace {

// The bytes received for a line.
std::string sent(const std::string& line)
{
    const LineReceiver receiver;
    sendLine(line);
    return receiver.nextConnection().value_or("(nothing)");
}

// The recorded socketCalls, in order.
std::vector<std::string> socketCalls;
const std::vector<std::string> oneAttempt = {"start 514", "socket 2 1 6", "connect 16",
                                             "send 0",    "close",        "cleanup"};

int WINAPI notedStart(WORD version, LPWSADATA data)
{
    socketCalls.push_back("start " + std::to_string(version));
    return systems(&WSAStartup, "WSAStartup", L"ws2_32.dll")(version, data);
}

SOCKET WINAPI notedSocket(int family, int type, int protocol)
{
    socketCalls.push_back("socket " + std::to_string(family) + ' ' + std::to_string(type) + ' ' +
                          std::to_string(protocol));
    return systems(&socket, "socket", L"ws2_32.dll")(family, type, protocol);
}

int WINAPI notedListen(SOCKET listening, int backlog)
{
    socketCalls.push_back("listen " + std::to_string(backlog));
    return systems(&listen, "listen", L"ws2_32.dll")(listening, backlog);
}

int WINAPI notedCloseSocket(SOCKET closed)
{
    socketCalls.push_back("close");
    return systems(&closesocket, "closesocket", L"ws2_32.dll")(closed);
}

int WINAPI notedCleanup()
{
    socketCalls.push_back("cleanup");
    return systems(&WSACleanup, "WSACleanup", L"ws2_32.dll")();
}

int WINAPI notedConnect(SOCKET connection, const sockaddr* address, int size)
{
    socketCalls.push_back("connect " + std::to_string(size));
    return systems(&connect, "connect", L"ws2_32.dll")(connection, address, size);
}

int WINAPI notedSend(SOCKET connection, const char* bytes, int size, int flags)
{
    socketCalls.push_back("send " + std::to_string(flags));
    return systems(&send, "send", L"ws2_32.dll")(connection, bytes, size, flags);
}

// The redirected name lookup returns two usable addresses and records the names.
std::vector<std::string> namesAsked;

hostent* WINAPI twoAddresses(const char* name)
{
    static char first[] = {127, 0, 0, 1};
    static char second[] = {127, 0, 0, 2};
    static char* addresses[] = {first, second, nullptr};
    static hostent entry{};
    namesAsked.emplace_back(name);
    entry.h_addrtype = AF_INET;
    entry.h_length = 4;
    entry.h_addr_list = addresses;
    return &entry;
}

// Address and port of each connection.
std::vector<std::string> targets;

int WINAPI targetedConnect(SOCKET connection, const sockaddr* address, int size)
{
    const auto& target = *reinterpret_cast<const sockaddr_in*>(address);
    targets.push_back(inet_ntoa(target.sin_addr) + (':' + std::to_string(ntohs(target.sin_port))));
    return systems(&connect, "connect", L"ws2_32.dll")(connection, address, size);
}

void noteCalls()
{
    redirectCalls(&WSAStartup, "WSAStartup", &notedStart, L"ws2_32.dll");
    redirectCalls(&socket, "socket", &notedSocket, L"ws2_32.dll");
    redirectCalls(&listen, "listen", &notedListen, L"ws2_32.dll");
    redirectCalls(&closesocket, "closesocket", &notedCloseSocket, L"ws2_32.dll");
    redirectCalls(&WSACleanup, "WSACleanup", &notedCleanup, L"ws2_32.dll");
    redirectCalls(&connect, "connect", &notedConnect, L"ws2_32.dll");
    redirectCalls(&send, "send", &notedSend, L"ws2_32.dll");
}

} // namespace

TEST(NetworkThread, listensOnAStreamSocket)
{
    noteCalls();
    EXPECT_EQ(networkThread(nullptr), 0u);
    EXPECT_EQ(socketCalls, (std::vector<std::string>{"start 257", "socket 2 1 0", "listen 10"}));
}

TEST(LineSender, sendsTheLineAndOneLineFeed)
{
    EXPECT_EQ(sent("TOOL-7"), "TOOL-7\n");
    EXPECT_EQ(sent(""), "\n");
    EXPECT_EQ(sent("a\r"), "a\r\n");
    EXPECT_EQ(sent("\x80\xFF"), "\x80\xFF\n");
}

TEST(LineSender, usesAConnectionForEachLine)
{
    const LineReceiver receiver;
    for (const char* line : {"one", "two", "three"}) {
        sendLine(line);
        EXPECT_EQ(receiver.nextConnection(), line + std::string("\n"));
    }
    EXPECT_TRUE(receiver.isIdle());
}

TEST(LineSender, sendsUpToTheFirstNul)
{
    EXPECT_EQ(sent(std::string("ab\0cd", 5)), "ab");
}

TEST(LineSender, sendsALineThatJustFits)
{
    const std::string line(1022, 'x');
    EXPECT_EQ(sent(line), line + "\n");
}

TEST(LineSender, sendsNoLineOf1024BytesOrMore)
{
    const LineReceiver receiver;
    sendLine(std::string(1023, 'x'));
    sendLine(std::string(1024, 'x'));
    sendLine(std::string(100000, 'x'));
    EXPECT_TRUE(receiver.isIdle());
    sendLine("next");
    EXPECT_EQ(receiver.nextConnection(), "next\n");
}

TEST(LineSender, triesOnceWithoutAListener)
{
    noteCalls();
    sendLine("lost");
    EXPECT_EQ(socketCalls, oneAttempt);
    const LineReceiver receiver;
    socketCalls.clear();
    sendLine("taken");
    EXPECT_EQ(socketCalls, oneAttempt);
    EXPECT_EQ(receiver.nextConnection(), "taken\n");
}

TEST(LineSender, connectsToTheFirstAddressOnly)
{
    redirectCalls(&connect, "connect", &targetedConnect, L"ws2_32.dll");
    redirectCalls(&gethostbyname, "gethostbyname", &twoAddresses, L"ws2_32.dll");
    EXPECT_EQ(sent("taken"), "taken\n");
    sendLine("lost");
    EXPECT_EQ(namesAsked, (std::vector<std::string>(2, ""))); // an empty name is the local computer
    EXPECT_EQ(targets, (std::vector<std::string>(2, "127.0.0.1:4559")));
}

TEST(LineSender, returnsWhenTheListenerNeverReads)
{
    const LineReceiver receiver; // accepts connections but never reads from them
    for (int i = 0; i < 10; ++i)
        sendLine("unread");
    EXPECT_FALSE(receiver.isIdle());
}

TEST(LineSender, returnsWhenTheListenerHangsUp)
{
    const LineReceiver receiver;
    std::thread hangingUp([&] { EXPECT_TRUE(receiver.hangUpOnNext()); });
    sendLine("cut off");
    hangingUp.join();
    EXPECT_TRUE(receiver.isIdle());
}

TEST(LineSender, leavesTheSocketsLibraryUnchanged)
{
    sendLine("lost");
    EXPECT_EQ(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP), INVALID_SOCKET);
    EXPECT_EQ(WSAGetLastError(), WSANOTINITIALISED);
}

TEST(LineSender, startsSocketsInVersionTwo)
{
    noteCalls();
    EXPECT_EQ(startSockets(), 0);
    EXPECT_EQ(socketCalls, std::vector<std::string>{"start 2"}); // Winsock version 2.0
    WSACleanup();
}
