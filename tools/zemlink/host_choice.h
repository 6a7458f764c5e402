// Which host a request goes to.
#pragma once

#include "peer/hosts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

struct HostChoice {
    std::optional<std::uint32_t> process{}; // empty: none, for this reason
    std::string reason{};
};

// The host that is named, or else the only one.
HostChoice chooseHost(const std::vector<companion::Host>& hosts,
                      std::optional<std::uint32_t> named);

} // namespace zemlink
