// Requests that came and went between two looks, from what their sender says.
#pragma once

#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zemlink {

// Each request is told once, after it was written: by the Companion's log, or by a replay. Those
// that were told and not seen in a command file are the ones that were missed, in the same order.
class SentRequests {
public:
    // A request that was sent. The time is that of a missed one.
    void add(const ExchangeEvent& request);
    // The host has taken the last of its requests.
    void addTaken(const ExchangeEvent& taking);
    // Gives requests without bytes, written and taken, those that were sent. A request of another
    // program, which nobody told, stays without. Then adds those that were taken and of which
    // nothing has been seen, but none of a host in `undecided`, whose requests may still be seen.
    void complete(std::vector<ExchangeEvent>& events,
                  const std::vector<std::uint32_t>& undecided = {});

private:
    struct Told {
        ExchangeEvent request{};
        size_t number = 0;
        std::int64_t takenAt = 0; // 0: not taken, as far as was told
    };
    struct Host {
        std::vector<Told> told{};        // not seen
        std::vector<std::string> seen{}; // not told
        size_t last = 0;                 // the number of the last that was told
    };
    using Numbers = std::vector<size_t>; // of the requests that were told, for each event

    Numbers matchSeen(const std::vector<ExchangeEvent>& events);
    void fillEmpty(std::vector<ExchangeEvent>& events, Numbers& numbers);
    static void addMissed(const Told& missed, std::vector<ExchangeEvent>& events, Numbers& numbers);

    std::map<std::uint32_t, Host> hosts_; // by process
    size_t count_ = 0;                    // of the requests that were told
};

} // namespace zemlink
