#include "tools/zemlink/session/sent_requests.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr size_t mostRequestsKept = 100; // of another program; they are never matched

// Removes the same request from the first list, or else adds it to the second.
void match(std::vector<std::string>& in, std::vector<std::string>& orIn, const std::string& request)
{
    const auto same = std::ranges::find(in, request);
    if (same != in.end()) {
        in.erase(same);
        return;
    }
    orIn.push_back(request);
    if (orIn.size() > mostRequestsKept)
        orIn.erase(orIn.begin());
}

} // namespace

void SentRequests::add(const ExchangeEvent& request)
{
    Host& host = hosts_[request.process];
    match(host.seen, host.told, request.bytes);
}

void SentRequests::complete(std::vector<ExchangeEvent>& events)
{
    for (const ExchangeEvent& event : events) {
        if (event.kind == EventKind::requestWritten && !event.bytes.empty()) {
            Host& host = hosts_[event.process];
            match(host.told, host.seen, event.bytes);
        }
    }
    std::map<std::uint32_t, std::string> missed;
    for (ExchangeEvent& event : events) {
        std::vector<std::string>& told = hosts_[event.process].told;
        if (event.kind == EventKind::requestWritten && event.bytes.empty() && !told.empty()) {
            missed[event.process] = told.front();
            told.erase(told.begin());
            event.bytes = missed[event.process];
        } else if (event.kind == EventKind::requestTaken && event.bytes.empty()) {
            event.bytes = missed[event.process];
        }
    }
}

} // namespace zemlink
