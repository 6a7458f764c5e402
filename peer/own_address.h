// Whom the port of the lines listens to.
#pragma once

#include <cstdint>

namespace companion {

// True when a connection comes from this computer: its peer is a loopback address, 127.x.x.x, or
// the very address that it came to. IPv4 addresses, the first number in the highest bits.
bool isOwnAddress(std::uint32_t peer, std::uint32_t local);

} // namespace companion
