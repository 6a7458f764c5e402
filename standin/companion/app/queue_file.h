// The NC queue that a host's line announces.
#pragma once

#include "peer/nc_queue_file.h"
#include "event_log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace companion {

struct QueuedProgram {
    std::int32_t pathNumber = 0; // -1: no machine settings were applied
    std::wstring file;
    std::wstring group;
    std::int64_t bytes = -1; // -1: the file is missing; or notLookedAt
};

// The size of a program that may lie on another computer.
inline constexpr std::int64_t notLookedAt = -2;

// A queue to be shown, in the order of its file.
struct ReceivedQueue {
    std::wstring file;
    std::vector<QueuedProgram> programs;
};

// Reads the queue file and logs its lines. A file of an add-in, `temp\ncqueue-<id>.txt` under the
// installation folder, is first given `.taken` behind its name and removed once it is read, so that
// the host can write its next one at any time; a file that cannot be moved or has another name or
// place stays. Empty when it cannot be read, which is logged.
std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& folder,
                                          const std::wstring& file);

} // namespace companion
