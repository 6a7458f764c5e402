// Shows the notices of hosts as they come.
#pragma once

#include "tools/zemlink/report.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace zemlink {

// Opens the port and gives each notice to `show` as it comes, after `showReady`, until there were
// `count` of them or `timeoutMs` have passed; without either, for ever. Empty connections, which
// `zemlink status` makes, are passed over. Exit code `trouble` when the port is taken or fewer than
// `count` came.
Outcome listenForNotices(std::optional<std::int64_t> count, std::optional<std::int64_t> timeoutMs,
                         const std::function<void()>& showReady,
                         const std::function<void(const Report&)>& show);

} // namespace zemlink
