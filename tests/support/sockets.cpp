#include "support/sockets.h"

#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>
#include <vector>
// Must come after the socket headers.
#include <iphlpapi.h>

namespace testing_support {

namespace {

peer::OwnSocket newSocket()
{
    return peer::OwnSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

sockaddr_in loopback(unsigned short port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

bool connects(const peer::OwnSocket& socket, const sockaddr_in& address)
{
    return connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

// True if the socket becomes readable before the timeout.
bool isReadable(const peer::OwnSocket& socket, unsigned milliseconds)
{
    fd_set sockets;
    FD_ZERO(&sockets);
    FD_SET(socket.get(), &sockets);
    timeval time = {static_cast<long>(milliseconds / 1000),
                    static_cast<long>(milliseconds % 1000 * 1000)};
    return select(0, &sockets, nullptr, nullptr, &time) > 0;
}

// Reads a system table, retrying until the buffer is large enough.
template <class Table, class Read>
std::vector<BYTE> tableOf(const Read& read)
{
    std::vector<BYTE> bytes(sizeof(Table));
    for (;;) {
        auto size = static_cast<DWORD>(bytes.size());
        if (read(bytes.data(), &size) != ERROR_INSUFFICIENT_BUFFER)
            return bytes;
        bytes.resize(size);
    }
}

template <class Table, class Read, class Port>
void addPorts(std::set<unsigned>& ports, const Read& read, Port portOf)
{
    const std::vector<BYTE> bytes = tableOf<Table>(read);
    const auto& table = *reinterpret_cast<const Table*>(bytes.data());
    for (DWORD i = 0; i < table.dwNumEntries; ++i)
        ports.insert(ntohs(static_cast<u_short>(table.table[i].*portOf)));
}

} // namespace

LineReceiver::LineReceiver()
{
    const sockaddr_in address = companionsAddress();
    // The sockets of a program that has just ended may stay open briefly.
    const bool isListening = waitUntil([&] {
        listening_ = newSocket();
        return bind(listening_.get(), reinterpret_cast<const sockaddr*>(&address),
                    sizeof address) == 0 &&
               listen(listening_.get(), 16) == 0;
    });
    if (!isListening) {
        std::fprintf(stderr, "cannot listen on port 4559: error %d\n", WSAGetLastError());
        std::exit(99);
    }
}

peer::OwnSocket LineReceiver::acceptNext() const
{
    return peer::OwnSocket(isReadable(listening_, generousMs)
                               ? accept(listening_.get(), nullptr, nullptr)
                               : INVALID_SOCKET);
}

std::optional<std::string> LineReceiver::nextConnection() const
{
    const peer::OwnSocket connection = acceptNext();
    if (!connection.isOpen())
        return std::nullopt;
    std::string bytes;
    char piece[512];
    for (int size; (size = recv(connection.get(), piece, sizeof piece, 0)) > 0;)
        bytes.append(piece, static_cast<size_t>(size));
    return bytes;
}

bool LineReceiver::isIdle() const
{
    return !isReadable(listening_, 0);
}

bool LineReceiver::hangUpOnNext() const
{
    return acceptNext().isOpen();
}

sockaddr_in companionsAddress()
{
    return loopback(peer::noticePort);
}

Client::Client(const char* localAddress) : socket_(newSocket())
{
    sockaddr_in address = companionsAddress();
    address.sin_addr.s_addr = inet_addr(localAddress);
    isConnected_ = connects(socket_, address);
}

bool Client::sendBytes(const std::string& bytes) const
{
    const int size = static_cast<int>(bytes.size());
    return send(socket_.get(), bytes.data(), size, 0) == size;
}

bool Client::waitForEnd() const
{
    char byte = 0;
    return recv(socket_.get(), &byte, 1, 0) <= 0;
}

bool sendToCompanion(const std::string& bytes)
{
    const Client client;
    return client.isConnected() && client.sendBytes(bytes);
}

int connectTo(unsigned short port)
{
    const peer::OwnSocket caller = newSocket();
    return connects(caller, loopback(port)) ? 0 : WSAGetLastError();
}

std::set<unsigned> openPorts()
{
    const auto tcp = [](ULONG family) {
        return [family](void* table, DWORD* size) {
            return GetExtendedTcpTable(table, size, FALSE, family, TCP_TABLE_OWNER_PID_LISTENER, 0);
        };
    };
    const auto udp = [](ULONG family) {
        return [family](void* table, DWORD* size) {
            return GetExtendedUdpTable(table, size, FALSE, family, UDP_TABLE_OWNER_PID, 0);
        };
    };
    std::set<unsigned> ports;
    addPorts<MIB_TCPTABLE_OWNER_PID>(ports, tcp(AF_INET), &MIB_TCPROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_TCP6TABLE_OWNER_PID>(ports, tcp(AF_INET6), &MIB_TCP6ROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_UDPTABLE_OWNER_PID>(ports, udp(AF_INET), &MIB_UDPROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_UDP6TABLE_OWNER_PID>(ports, udp(AF_INET6), &MIB_UDP6ROW_OWNER_PID::dwLocalPort);
    return ports;
}

} // namespace testing_support
