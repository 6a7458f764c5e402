// The order of events that were found with one look.
#pragma once

#include "tools/zemlink/session/exchange_event.h"

#include <vector>

namespace zemlink {

// Sorts by time, which files have only to a few milliseconds, and at the same time by what follows
// from what: machine settings before their request, a request before its load, a picture before
// its commit. Times are put between `least` and `most`.
void putInOrder(std::vector<ExchangeEvent>& events, std::int64_t least, std::int64_t most);

} // namespace zemlink
