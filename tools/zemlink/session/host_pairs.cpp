#include "tools/zemlink/session/host_pairs.h"

#include "peer/command_file.h"
#include "peer/exchange_paths.h"
#include "peer/running_programs.h"

#include <algorithm>

namespace zemlink {
namespace {

using HostsOfRequests = std::map<std::int32_t, std::uint32_t>;

void addRequest(HostsOfRequests& hosts, const ExchangeEvent& event)
{
    if (event.kind == EventKind::requestWritten)
        hosts[peer::parseHostCommand(event.bytes).id] = event.process;
}

void findHost(ExchangeEvent& settings, const HostsOfRequests& hosts)
{
    const auto id = peer::requestOfMachineSettings(peer::fileNameOf(settings.file));
    const auto found = id ? hosts.find(*id) : hosts.end();
    if (settings.process == 0 && found != hosts.end())
        settings.process = found->second;
}

} // namespace

// They are written before the request and taken after it.
void findHostsOfSettings(std::vector<ExchangeEvent>& events)
{
    HostsOfRequests later, earlier;
    for (auto event = events.rbegin(); event != events.rend(); ++event) {
        addRequest(later, *event);
        if (event->kind == EventKind::machineSettingsWritten)
            findHost(*event, later);
    }
    for (ExchangeEvent& event : events) {
        addRequest(earlier, event);
        if (event.kind == EventKind::machineSettingsTaken)
            findHost(event, earlier);
    }
}

HostPairs::HostPairs(const std::vector<ExchangeEvent>& recorded, std::vector<std::uint32_t> running)
    : running_(std::move(running)), areGiven_(!running_.empty())
{
    for (const ExchangeEvent& event : recorded)
        if (event.kind == EventKind::requestWritten || event.kind == EventKind::hostStarted)
            places_.try_emplace(event.process, places_.size());
}

bool HostPairs::isPlayed(const ExchangeEvent& recorded) const
{
    const auto place = places_.find(recorded.process);
    return !areGiven_ || place == places_.end() || place->second < running_.size();
}

bool HostPairs::isPlaying(const ExchangeEvent& seen) const
{
    const bool isOfHost = seen.process != 0 && seen.kind != EventKind::commitWritten;
    return !areGiven_ || !isOfHost || std::ranges::find(running_, seen.process) != running_.end();
}

std::optional<std::uint32_t> HostPairs::findStandIn(const ExchangeEvent& recorded)
{
    if (!areGiven_)
        for (const peer::Host& host : peer::findHosts())
            if (std::ranges::find(running_, host.process) == running_.end())
                running_.push_back(host.process);
    const auto found = places_.find(recorded.process);
    const size_t place = found == places_.end() ? 0 : found->second;
    return place < running_.size() ? std::optional(running_[place]) : std::nullopt;
}

} // namespace zemlink
