// Whether a host has opened a file, from the log of loads.
#pragma once

#include "peer/debug_log.h"

#include <cstdint>
#include <string>

namespace zemlink {

// The size of the log now: loads that are logged from there on are later ones.
std::uint64_t loadLogSize(const std::wstring& folder);

// Waits until the file's load is finished, the host has ended or the time is over. The load is the
// file's last one after that place in the log; its last step is 0 if none has begun.
peer::LoggedLoad waitForLoad(const std::wstring& folder, const std::wstring& file,
                             std::uint64_t logStart, std::uint32_t host, std::int64_t boundMs);

} // namespace zemlink
