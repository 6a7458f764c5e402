// The open ports of a host with the shipped add-in, as listed by the system.
#include "support/host_program.h"
#include "support/sockets.h"

#include <gtest/gtest.h>

using namespace testing_support;

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
