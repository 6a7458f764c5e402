// Ports of the local computer.
#pragma once

namespace testing_support {

// The error of a connection to this port, 0 for none. The sockets library has to be started.
int connectTo(unsigned short port);

} // namespace testing_support
