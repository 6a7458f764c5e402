#include "tools/zemlink/session/sent_requests.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

constexpr size_t mostRequestsKept = 100; // of another program; they are never matched
constexpr size_t notTold = std::numeric_limits<size_t>::max(); // later than all that were told

template <class Request>
void keep(std::vector<Request>& kept, const Request& request)
{
    kept.push_back(request);
    if (kept.size() > mostRequestsKept)
        kept.erase(kept.begin());
}

bool isRequest(const ExchangeEvent& event)
{
    return event.kind == EventKind::requestWritten;
}

} // namespace

void SentRequests::add(const ExchangeEvent& request)
{
    Host& host = hosts_[request.process];
    host.last = ++count_;
    const auto same = std::ranges::find(host.seen, request.bytes);
    if (same != host.seen.end())
        host.seen.erase(same);
    else
        keep(host.told, Told{request, host.last});
}

void SentRequests::addTaken(const ExchangeEvent& taking)
{
    Host& host = hosts_[taking.process];
    const auto last = std::ranges::find(host.told, host.last, &Told::number);
    if (last != host.told.end())
        last->takenAt = taking.at;
}

void SentRequests::complete(std::vector<ExchangeEvent>& events,
                            const std::vector<std::uint32_t>& undecided)
{
    Numbers numbers = matchSeen(events);
    fillEmpty(events, numbers);
    for (auto& [process, host] : hosts_) {
        if (std::ranges::find(undecided, process) != undecided.end())
            continue;
        for (const Told& each : host.told)
            if (each.takenAt != 0)
                addMissed(each, events, numbers);
        std::erase_if(host.told, [](const Told& each) { return each.takenAt != 0; });
    }
}

SentRequests::Numbers SentRequests::matchSeen(const std::vector<ExchangeEvent>& events)
{
    Numbers numbers(events.size(), notTold);
    for (size_t i = 0; i < events.size(); ++i) {
        if (!isRequest(events[i]) || events[i].bytes.empty())
            continue;
        Host& host = hosts_[events[i].process];
        const auto same = std::ranges::find_if(
            host.told, [&](const Told& each) { return each.request.bytes == events[i].bytes; });
        if (same == host.told.end()) {
            keep(host.seen, events[i].bytes);
        } else {
            numbers[i] = same->number;
            host.told.erase(same);
        }
    }
    return numbers;
}

void SentRequests::fillEmpty(std::vector<ExchangeEvent>& events, Numbers& numbers)
{
    std::map<std::uint32_t, std::string> missed;
    for (size_t i = 0; i < events.size(); ++i) {
        ExchangeEvent& event = events[i];
        std::vector<Told>& told = hosts_[event.process].told;
        if (isRequest(event) && event.bytes.empty() && !told.empty()) {
            numbers[i] = told.front().number;
            missed[event.process] = told.front().request.bytes;
            told.erase(told.begin());
            event.bytes = missed[event.process];
        } else if (event.kind == EventKind::requestTaken && event.bytes.empty()) {
            event.bytes = missed[event.process];
        }
    }
}

// Directly before the host's next request, else after all of its others. The times of files and of
// logs differ by milliseconds, so that they do not tell the order.
void SentRequests::addMissed(const Told& missed, std::vector<ExchangeEvent>& events,
                             Numbers& numbers)
{
    ExchangeEvent written = missed.request;
    ExchangeEvent taken = missed.request;
    taken.kind = EventKind::requestTaken;
    taken.at = missed.takenAt;
    size_t place = 0;
    for (; place < events.size(); ++place) {
        const ExchangeEvent& other = events[place];
        if (other.process != written.process)
            continue;
        if (isRequest(other) && numbers[place] > missed.number) {
            written.at = taken.at = other.at;
            break;
        }
        if (isRequest(other) || other.kind == EventKind::requestTaken)
            written.at = std::max(written.at, other.at);
    }
    taken.at = std::max(taken.at, written.at);
    const auto at = static_cast<std::ptrdiff_t>(place);
    events.insert(events.begin() + at, {written, taken});
    numbers.insert(numbers.begin() + at, 2, missed.number);
}

} // namespace zemlink
