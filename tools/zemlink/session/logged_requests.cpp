#include "tools/zemlink/session/logged_requests.h"

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

void LoggedRequests::add(const ExchangeEvent& request)
{
    Host& host = hosts_[request.process];
    match(host.seen, host.logged, request.bytes);
}

void LoggedRequests::complete(std::vector<ExchangeEvent>& events)
{
    for (const ExchangeEvent& event : events) {
        if (event.kind == EventKind::requestWritten && !event.bytes.empty()) {
            Host& host = hosts_[event.process];
            match(host.logged, host.seen, event.bytes);
        }
    }
    std::map<std::uint32_t, std::string> missed;
    for (ExchangeEvent& event : events) {
        std::vector<std::string>& logged = hosts_[event.process].logged;
        if (event.kind == EventKind::requestWritten && event.bytes.empty() && !logged.empty()) {
            missed[event.process] = logged.front();
            logged.erase(logged.begin());
            event.bytes = missed[event.process];
        } else if (event.kind == EventKind::requestTaken && event.bytes.empty()) {
            event.bytes = missed[event.process];
        }
    }
}

} // namespace zemlink
