// Plays the Companion's side of a recording against running hosts and compares what they do.
#pragma once

#include "tools/zemlink/session/comparison.h"
#include "tools/zemlink/session/recording.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

struct ReplayOptions {
    bool isAtOnce = false; // else at the recorded pace
    // The hosts that stand for the first recorded ones, which are the only ones that are played;
    // empty: those that are running and those that start, for all.
    std::vector<std::uint32_t> hosts{};
    std::int64_t patienceMs = 30000; // for each thing that a host was recorded doing
    HANDLE stop = nullptr;           // ends the replay when it is signalled
};

struct ReplayResult {
    bool isInterrupted = false;
    size_t carriedOut = 0;               // of the Companion's exchanges
    std::vector<std::string> failures{}; // of those that were not, why
    size_t compared = 0;                 // of the hosts' recorded exchanges
    std::vector<Difference> differences{};
    size_t refusedStarts = 0; // of the Companion, whose place was taken
};

struct ReplayOutput {
    std::function<void()> showReady{};                // hosts can find us now
    std::function<void(const ExchangeEvent&)> show{}; // each event as it happens
};

// Throws std::runtime_error for a redacted recording, whose names are no files.
void checkReplayable(const Recording& recording);

// Writes the recorded machine settings and requests, each once the hosts have done what they did
// before it in the recording, or the patience is over. Passes each event to `show` as it happens.
// Once it is stopped, it writes nothing more and compares only what it has come to. Throws
// CompanionRole's errors.
ReplayResult replay(const Recording& recording, const std::wstring& folder,
                    const ReplayOptions& options, const ReplayOutput& output);

} // namespace zemlink
