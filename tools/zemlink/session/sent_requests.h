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
    // A request that was sent; the time is not used.
    void add(const ExchangeEvent& request);
    // Gives requests without bytes, written and taken, those that were sent. A request of another
    // program, which nobody told, stays without.
    void complete(std::vector<ExchangeEvent>& events);

private:
    struct Host {
        std::vector<std::string> told{}; // not seen
        std::vector<std::string> seen{}; // not told
    };
    std::map<std::uint32_t, Host> hosts_; // by process
};

} // namespace zemlink
