// The usual troubles, from what there is to see.
#pragma once

#include "tools/zemlink/facts.h"
#include "tools/zemlink/report.h"

#include <string>
#include <vector>

namespace zemlink {

struct Trouble {
    std::string name;   // `stale-command-file`
    std::string what;   // what is the matter, with the cause
    std::string advice; // what to do about it
};

// In the order in which they are best dealt with. docs/zemlink.md lists them all.
std::vector<Trouble> findTroubles(const Facts& facts);

// Exit code `trouble` when there is one.
Outcome troublesOutcome(const std::vector<Trouble>& troubles);

} // namespace zemlink
