// The NC queue that a host's line announces.
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

// Tool data to be shown, in the order of its file.
struct ReceivedTools {
    std::int64_t id = 0; // request id
    std::wstring folder; // installation folder, for the pictures
    std::vector<peer::ToolRecord> records;
};

// Reads the tool data file of the request under the installation folder and logs each of its
// lines. Empty when it cannot be read, which is logged.
std::optional<ReceivedTools> receiveTools(EventLog& log, const std::wstring& folder,
                                          std::int64_t id);

// The rows of the tool window's two lists: the tool of an operation (number, type, diameter,
// operation id, comment), and its other values, each with a title.
std::vector<std::wstring> toolCells(const peer::ToolRecord& record);
std::vector<std::vector<std::wstring>> toolDetails(const peer::ToolRecord& record);

} // namespace companion
