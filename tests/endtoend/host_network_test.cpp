// The open ports of a host with the shipped add-in, as listed by the system.
#include "support/host_program.h"
#include "support/sockets.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>
// Must come after the socket headers.
#include <iphlpapi.h>

using namespace testing_support;

namespace {

template <class Table, class Kind, class Port>
void addPorts(std::set<unsigned>& ports,
              DWORD(WINAPI* read)(void*, DWORD*, BOOL, ULONG, Kind, ULONG), ULONG family, Kind kind,
              Port portOf)
{
    std::vector<BYTE> bytes(1 << 20);
    auto size = static_cast<DWORD>(bytes.size());
    ASSERT_EQ(read(bytes.data(), &size, FALSE, family, kind, 0), DWORD{NO_ERROR});
    const auto& table = *reinterpret_cast<const Table*>(bytes.data());
    for (DWORD i = 0; i < table.dwNumEntries; ++i)
        ports.insert(ntohs(static_cast<u_short>(table.table[i].*portOf)));
}

// The ports open on this computer: TCP ports in the listening state and bound UDP ports, for IPv4
// and IPv6.
std::set<unsigned> openPorts()
{
    std::set<unsigned> ports;
    addPorts<MIB_TCPTABLE_OWNER_PID>(ports, GetExtendedTcpTable, AF_INET,
                                     TCP_TABLE_OWNER_PID_LISTENER,
                                     &MIB_TCPROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_TCP6TABLE_OWNER_PID>(ports, GetExtendedTcpTable, AF_INET6,
                                      TCP_TABLE_OWNER_PID_LISTENER,
                                      &MIB_TCP6ROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_UDPTABLE_OWNER_PID>(ports, GetExtendedUdpTable, AF_INET, UDP_TABLE_OWNER_PID,
                                     &MIB_UDPROW_OWNER_PID::dwLocalPort);
    addPorts<MIB_UDP6TABLE_OWNER_PID>(ports, GetExtendedUdpTable, AF_INET6, UDP_TABLE_OWNER_PID,
                                      &MIB_UDP6ROW_OWNER_PID::dwLocalPort);
    return ports;
}

} // namespace

// The owning process of a port is not available here; no other program uses the network during the
// tests.
TEST(HostNetwork, gainsNoOpenPortWithTheAddIn)
{
    const Installation installation{Registry::ofTheUser};
    const LineReceiver receiver;
    const std::set<unsigned> before = openPorts();
    ASSERT_EQ(before.count(4559), 1u); // the receiver's port: the list works
    const HostProgram host(installation, "set setup_sheet_files C:\\a.xml\ncall m_tools 0\n"
                                         "wait-for (never) 600000\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_EQ(receiver.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\a.xml\n");
    ASSERT_TRUE(host.waitForTrace(L"ui m_tools(0) -> 0"));
    EXPECT_EQ(openPorts(), before);
}
