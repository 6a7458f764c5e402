// The tool data that a host's line announces.
#pragma once

#include "peer/tool_record.h"
#include "event_log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace companion {

// Tool data to be shown, in the order of its file.
struct ReceivedTools {
    std::int64_t id = 0; // request id
    std::wstring folder; // installation folder, for the pictures
    std::vector<ToolRecord> records;
};

// Reads the tool data file of the request under the installation folder and logs each of its
// lines. Empty when it cannot be read, which is logged.
std::optional<ReceivedTools> receiveTools(EventLog& log, const std::wstring& folder,
                                          std::int64_t id);

} // namespace companion
