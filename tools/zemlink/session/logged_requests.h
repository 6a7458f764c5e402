// Requests that came and went between two looks, from the Companion's log.
#pragma once

#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zemlink {

// The Companion logs each of its requests once, after writing it. Those in the log that were not
// seen in a command file are therefore the ones that were missed, in the same order.
class LoggedRequests {
public:
    // A request in the log.
    void add(const ExchangeEvent& request);
    // Gives requests without bytes, written and taken, those from the log. A request of another
    // program, which is not in the log, stays without.
    void complete(std::vector<ExchangeEvent>& events);

private:
    struct Host {
        std::vector<std::string> logged{}; // not seen
        std::vector<std::string> seen{};   // not logged
    };
    std::map<std::uint32_t, Host> hosts_; // by process
};

} // namespace zemlink
