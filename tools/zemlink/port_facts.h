// Who is listening on port 4559.
#pragma once

#include "tools/zemlink/facts.h"

namespace zemlink {

// The listening process and its program, without making a connection. No holder when no process
// listens or it is unknown.
Port portHolder();

// The same, and whether a connection to the address to which hosts send is accepted; no byte is
// sent. Takes at most five seconds.
Port probePort();

} // namespace zemlink
