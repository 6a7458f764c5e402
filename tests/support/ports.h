// Ports of the local computer.
#pragma once

#include <set>

namespace testing_support {

// The error of a connection to this port, 0 for none. The sockets library has to be started.
int connectTo(unsigned short port);

// The ports that any process has open to others: those it listens on over TCP and those it is bound
// to over UDP, of both versions of the internet protocol.
std::set<unsigned> openPorts();

} // namespace testing_support
