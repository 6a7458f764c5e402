// The ports that a host with the add-in that ships has open, as the system lists them.
#include "support/host_program.h"
#include "support/sockets.h"

#include <gtest/gtest.h>

using namespace testing_support;

// The system does not tell here which process has a port open; the tests have the network to
// themselves.
TEST(HostNetwork, gainsNoOpenPortWithTheAddIn)
{
    const Installation installation{Registry::ofTheUser};
    const LineReceiver receiver;
    const std::set<unsigned> before = openPorts();
    ASSERT_EQ(before.count(4559), 1u); // the receiver's: the system lists ports
    const HostProgram host(installation, "set setup_sheet_files C:\\a.xml\ncall m_tools 0\n"
                                         "wait-for (never) 600000\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_EQ(receiver.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\a.xml\n");
    ASSERT_TRUE(host.waitForTrace(L"ui m_tools(0) -> 0"));
    EXPECT_EQ(openPorts(), before);
}
