// The files that notices announce: NC queues and tool data.
#pragma once

#include "peer/nc_queue_file.h"
#include "peer/tool_record.h"
#include "standin/companion/log/event_log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace companion {

struct QueuedProgram {
    std::int32_t pathNumber = 0; // -1: no machine settings were applied
    std::wstring file;
    std::wstring group;
    std::int64_t bytes = -1; // -1: the file is missing; or notRead
};

// Not read because the program may be on another computer.
inline constexpr std::int64_t notRead = -2;

// A queue to show, in file order.
struct ReceivedQueue {
    std::wstring file;
    std::vector<QueuedProgram> programs;
};

// Reads the queue file and logs its lines. A queue of an add-in, `temp\ncqueue-<id>.txt` below the
// installation folder, is first renamed to `….taken` and deleted after it was read, so that the
// host can write its next one at any time; a file that cannot be renamed or has another name or
// folder stays. Empty when it cannot be read, which is logged.
std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& folder,
                                          const std::wstring& file);

// Tool data to show, in file order.
struct ReceivedTools {
    std::int64_t id = 0; // request id
    std::wstring folder; // installation folder, for the pictures
    std::vector<peer::ToolRecord> records;
};

// Reads the tool data file of the request and logs its lines. Empty when it cannot be read, which
// is logged.
std::optional<ReceivedTools> receiveTools(EventLog& log, const std::wstring& folder,
                                          std::int64_t id);

// The rows of the tool window's two lists: the tool of an operation (number, type, diameter,
// operation id, comment), and its other values, each with a title.
std::vector<std::wstring> toolCells(const peer::ToolRecord& record);
std::vector<std::vector<std::wstring>> toolDetails(const peer::ToolRecord& record);

} // namespace companion
