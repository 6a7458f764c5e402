// What becomes of a line that a host's add-in sent.
#pragma once

#include "decisions/setupsheet.h"
#include "eventlog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

// A setup sheet to be shown.
struct ReceivedSheet {
    std::int32_t id = 0;
    std::wstring file;
    std::wstring text;                 // of the whole file
    std::optional<SetupSheet> content; // empty: show the text
};

// Logs a connection's bytes and what they say. Gives the setup sheet that they announce, when its
// file can be read.
std::optional<ReceivedSheet> receiveLine(EventLog& log, std::string_view bytes);

} // namespace companion
