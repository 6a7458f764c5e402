#include "tools/zemlink/host_choice.h"

#include "peer/text.h"

#include <algorithm>

namespace zemlink {
namespace {

HostChoice chooseNamed(const std::vector<companion::Host>& hosts, std::uint32_t named)
{
    const bool isThere = std::any_of(hosts.begin(), hosts.end(), [&](const companion::Host& host) {
        return host.process == named;
    });
    if (!isThere) {
        return {std::nullopt,
                "process " + std::to_string(named) + " is no running host with the add-in"};
    }
    return {named};
}

} // namespace

HostChoice chooseHost(const std::vector<companion::Host>& hosts, std::optional<std::uint32_t> named)
{
    if (named)
        return chooseNamed(hosts, *named);
    if (hosts.empty())
        return {std::nullopt, "no host with the add-in runs"};
    if (hosts.size() == 1)
        return {hosts.front().process};
    std::string reason = "several hosts run, choose one with --host:";
    for (const companion::Host& host : hosts) {
        reason += (host == hosts.front() ? " " : ", ") + std::to_string(host.process) + " (" +
                  companion::toUtf8(host.title) + ")";
    }
    return {std::nullopt, reason};
}

} // namespace zemlink
