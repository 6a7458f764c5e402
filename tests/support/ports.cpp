#include "support/ports.h"

#include <vector>
#include <winsock2.h>
// Needs the one above.
#include <iphlpapi.h>

namespace testing_support {

namespace {

// A table of the system's, as large as it has become by the time it is read.
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

int connectTo(unsigned short port)
{
    const SOCKET caller = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const int result = connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const int error = result == 0 ? 0 : WSAGetLastError();
    closesocket(caller);
    return error;
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
