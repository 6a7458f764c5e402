// One thing that happened between the Companion and the hosts: what `watch` shows, `record` keeps
// and `replay` compares.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zemlink {

enum class EventKind {
    companionStarted,
    companionEnded,
    hostStarted, // its command file exists
    hostEnded,
    machineSettingsWritten,
    requestWritten,
    requestTaken,
    machineSettingsTaken,
    loadStep,
    pictureWritten, // of the screen or of a tool
    commitWritten,
    commitTaken,
    ncQueueWritten,
    toolDataWritten,
    answerWritten, // to a check-out command
    notice,        // a line to the Companion's port
};

// `request-written`
std::string_view eventWord(EventKind kind);
std::optional<EventKind> eventOfWord(std::string_view word);

// Whose doing it is: of the Companion or of a host.
enum class Side { companion, host };
Side sideOf(EventKind kind);

struct ExchangeEvent {
    std::int64_t at = 0; // milliseconds since 1970, UTC
    EventKind kind{};
    std::uint32_t process = 0; // that started, ended, wrote or is written to; 0: unknown
    std::wstring file{};       // the exchange file's path; empty: none
    std::string bytes{};       // of one request, record, step or notice, else of the whole file
};

} // namespace zemlink
