// What differs between a recorded session and the same one replayed.
#pragma once

#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/exchange_event.h"

#include <optional>
#include <string>
#include <vector>

namespace zemlink {

enum class DifferenceKind {
    missing, // recorded, but not seen
    extra,   // seen, but not recorded
    bytes,   // its bytes or its file's name differ
    order    // it came after one that it preceded in the recording
};

struct Difference {
    DifferenceKind kind{};
    std::optional<ExchangeEvent> recorded{}; // missing, bytes, order
    std::optional<ExchangeEvent> seen{};     // extra, bytes; order: the one that came first
};

// True for what a host does and a replay compares: all but its start and end.
bool isCompared(EventKind kind);

// What is equal for two exchanges that differ only in what differs from run to run: process ids and
// the numbers of NC queues in file names and notices, the addresses in tool data, and the pixels of
// the screen (not its size).
std::string comparableText(const ExchangeEvent& event);

// Compares what hosts do. Both in order of time. Two that were recorded within a quarter of a
// second may come in either order.
std::vector<Difference> compareExchanges(const std::vector<ExchangeEvent>& recorded,
                                         const std::vector<ExchangeEvent>& seen);

// `missing: …`
Report differenceReport(const Difference& difference);

} // namespace zemlink
