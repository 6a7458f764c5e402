// The Companion's number for a file. No platform header.
#pragma once

#include <cstdint>

namespace torvapdm {

// No file of the Companion is known.
constexpr std::uint32_t noZemId = 0xFFFFFFFF;

} // namespace torvapdm
