// Who is listening on port 4559.
#pragma once

#include "tools/zemlink/reports/facts.h"

namespace zemlink {

// The listening process and its program, without making a connection. No holder when no process
// listens or it is unknown.
Port portHolder();

// The same, and whether a program listens at the address to which hosts send. If the system's table
// of sockets shows none or cannot be read, a connection without bytes shows it, which takes at most
// five seconds.
Port probePort();

} // namespace zemlink
