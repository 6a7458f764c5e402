#include "tools/zemlink/session/exchange_event.h"

#include <iterator>

namespace zemlink {
namespace {

struct KindRow {
    std::string_view word;
    Side side;
};

// In the order of the enumeration.
constexpr KindRow rows[] = {
    {"companion-started", Side::companion},
    {"companion-ended", Side::companion},
    {"host-started", Side::host},
    {"host-ended", Side::host},
    {"machine-settings-written", Side::companion},
    {"request-written", Side::companion},
    {"request-taken", Side::host},
    {"machine-settings-taken", Side::host},
    {"load-step", Side::host},
    {"picture-written", Side::host},
    {"commit-written", Side::host},
    {"commit-taken", Side::companion},
    {"nc-queue-written", Side::host},
    {"tool-data-written", Side::host},
    {"answer-written", Side::companion},
    {"notice", Side::host},
};
static_assert(std::size(rows) == static_cast<size_t>(EventKind::notice) + 1);

const KindRow& rowOf(EventKind kind)
{
    return rows[static_cast<size_t>(kind)];
}

} // namespace

std::string_view eventWord(EventKind kind)
{
    return rowOf(kind).word;
}

std::optional<EventKind> eventOfWord(std::string_view word)
{
    for (size_t i = 0; i < std::size(rows); ++i)
        if (rows[i].word == word)
            return static_cast<EventKind>(i);
    return std::nullopt;
}

Side sideOf(EventKind kind)
{
    return rowOf(kind).side;
}

} // namespace zemlink
