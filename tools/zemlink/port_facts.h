// Who is to be met on the port of the lines.
#pragma once

#include "tools/zemlink/facts.h"

namespace zemlink {

// The process that listens on the port and its program, without a connection. No holder when
// nobody does or the system does not tell.
Port portHolder();

// The same, and whether a connection is accepted, made to the address to which hosts send; it
// carries no byte. Takes at most five seconds.
Port lookAtPort();

} // namespace zemlink
