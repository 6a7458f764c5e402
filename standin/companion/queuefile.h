// The NC queue that a host's line announces.
#pragma once

#include "decisions/ncqueue.h"
#include "eventlog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace companion {

struct QueuedProgram {
    std::int32_t pathNumber = 0; // -1: no machine settings were applied
    std::wstring file;
    std::wstring group;
    std::int64_t bytes = -1; // -1: the file is missing
};

// A queue to be shown, in the order of its file.
struct ReceivedQueue {
    std::wstring file;
    std::vector<QueuedProgram> programs;
};

// Reads the queue file, logs each of its lines, and removes the file if it is named as a queue's;
// what cannot be removed stays. Empty when it cannot be read, which is logged.
std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& file);

} // namespace companion
