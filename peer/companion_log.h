// The Companion's event log, `sys\companion.log`: UTF-8, one event a line, each ended by a line
// feed.
//
//   2026-11-21 10:11:12.345 sent id=17 host=4711 file="C:\TORVA\ZEM\work\bracket.mcam"
//
// Local date and time, the event, then its fields: a number or a word as it is, a text in double
// quotes without escaping.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

struct EventField {
    std::string name{};
    std::string value{};
    bool isText = false; // in double quotes
};

struct CompanionEvent {
    std::string time{}; // `2026-11-21 10:11:12.345`
    std::string name{};
    std::vector<EventField> fields{};
};

// One entry for each line; empty for a line that is not an event. A text ends at the first quote
// that is followed by the line's end or by another field.
std::vector<std::optional<CompanionEvent>> parseCompanionLog(std::string_view bytes);

} // namespace peer
