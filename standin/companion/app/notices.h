// What becomes of a line that a host's add-in sent.
#pragma once

#include "setup_sheet.h"
#include "event_log.h"
#include "queue_file.h"
#include "tool_file.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace companion {

// A setup sheet to be shown.
struct ReceivedSheet {
    std::int32_t id = 0;
    std::wstring file;
    std::wstring text;                 // of the whole file
    std::optional<SetupSheet> content; // empty: show the text
};

// What a line brought that is to be shown; often nothing.
using Received = std::variant<std::monostate, ReceivedSheet, ReceivedQueue, ReceivedTools>;

// Logs a connection's bytes and what they say, and reads the file that they announce. `folder`: the
// installation folder.
Received receiveLine(EventLog& log, const std::wstring& folder, std::string_view bytes);

} // namespace companion
