#include "peer/own_address.h"

namespace companion {

bool isOwnAddress(std::uint32_t peer, std::uint32_t local)
{
    constexpr std::uint32_t loopback = 127;
    return peer == local || peer >> 24 == loopback;
}

} // namespace companion
