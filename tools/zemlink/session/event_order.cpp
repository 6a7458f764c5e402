#include "tools/zemlink/session/event_order.h"

#include "peer/debug_log.h"

#include <algorithm>

namespace zemlink {
namespace {

int rankOf(EventKind kind)
{
    constexpr int last = 100;
    const bool isEnd = kind == EventKind::companionEnded || kind == EventKind::hostEnded;
    // Requests stay in the order in which they were seen: one is taken before the next is written.
    return isEnd                             ? last
           : kind == EventKind::requestTaken ? static_cast<int>(EventKind::requestWritten)
           : kind == EventKind::commitTaken  ? last - 1
                                             : static_cast<int>(kind);
}

bool isOneOfStepsUpTo2(const ExchangeEvent& event)
{
    if (event.kind != EventKind::loadStep)
        return false;
    const int step = peer::parseLoadStep(event.bytes).number;
    return step == 1 || step == 2;
}

// A removal leaves no time. The add-in takes the settings after step 2 and before step 3.
void putSettingsBeforeSteps(std::vector<ExchangeEvent>& events)
{
    const auto step = std::ranges::find(events, EventKind::loadStep, &ExchangeEvent::kind);
    for (ExchangeEvent& event : events)
        if (event.kind == EventKind::machineSettingsTaken && step != events.end())
            event.at = step->at;
}

void moveSettingsPastStep2(std::vector<ExchangeEvent>& events)
{
    for (size_t i = events.size(); i-- > 1;) {
        size_t place = i - 1;
        while (events[place].kind == EventKind::machineSettingsTaken && place + 1 < events.size() &&
               isOneOfStepsUpTo2(events[place + 1])) {
            std::swap(events[place], events[place + 1]);
            ++place;
        }
    }
}

} // namespace

void putInOrder(std::vector<ExchangeEvent>& events, std::int64_t least, std::int64_t most)
{
    putSettingsBeforeSteps(events);
    for (ExchangeEvent& event : events)
        event.at = std::clamp(event.at, least, std::max(least, most));
    std::ranges::stable_sort(events, [](const ExchangeEvent& a, const ExchangeEvent& b) {
        return a.at != b.at ? a.at < b.at : rankOf(a.kind) < rankOf(b.kind);
    });
    moveSettingsPastStep2(events);
}

} // namespace zemlink
