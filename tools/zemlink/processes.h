// Processes, by their ids.
#pragma once

#include <cstdint>
#include <string>

namespace zemlink {

// True also for one that the user may not look at.
bool isRunning(std::uint32_t process);

// The path of its program; empty when it cannot be told.
std::wstring programOf(std::uint32_t process);

} // namespace zemlink
