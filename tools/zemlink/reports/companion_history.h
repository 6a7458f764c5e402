// What the Companion's event log has about the running Companion and its requests.
#pragma once

#include "peer/companion_log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

using CompanionEvents = std::vector<peer::CompanionEvent>;

// The events of a log; lines that are no events are skipped.
CompanionEvents eventsIn(std::string_view bytes);

// An open request that the Companion has written.
struct SentRequest {
    std::int32_t id = 0;
    std::uint32_t host = 0; // process id
    std::string file{};     // UTF-8
};

// In the order in which they were written.
std::vector<SentRequest> sentRequests(const CompanionEvents& events);

// Whether this process has the notice port. Empty when the log does not tell: the last start in it
// is another process's.
std::optional<bool> hasPort(const CompanionEvents& events, std::uint32_t process);

// A commit on a command line that found no running instance to take it.
struct RefusedCommit {
    std::string time{};
    std::string file{}; // UTF-8
};

// Those whose file has not been committed since.
std::vector<RefusedCommit> refusedCommits(const CompanionEvents& events);

} // namespace zemlink
