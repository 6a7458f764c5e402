// Which running host takes the place of which recorded one.
#pragma once

#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace zemlink {

// Machine settings are recorded without their host when several are running. It is the one that
// gets the request with their id.
void findHostsOfSettings(std::vector<ExchangeEvent>& events);

// Two lists of processes, paired by their places.
class HostPairs {
public:
    // `running`: the hosts for the first recorded ones, which are the only ones that are played;
    // empty: those that are running and those that start, for all.
    HostPairs(const std::vector<ExchangeEvent>& recorded, std::vector<std::uint32_t> running);

    // False for what happened to a recorded host that is not played.
    bool isPlayed(const ExchangeEvent& recorded) const;
    // False for what a running host does that plays none.
    bool isPlaying(const ExchangeEvent& seen) const;
    // The running process in place of the event's recorded one, or any if that is unknown; empty
    // while there is none.
    std::optional<std::uint32_t> findStandIn(const ExchangeEvent& recorded);

private:
    std::map<std::uint32_t, size_t> places_{}; // of the recorded ones
    std::vector<std::uint32_t> running_;
    bool areGiven_;
};

} // namespace zemlink
