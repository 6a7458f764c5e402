// The rules for a Companion, checked from the side of the hosts.
#pragma once

#include "tools/zemlink/verify/rules.h"

#include <string>
#include <windows.h>

namespace zemlink {

struct CompanionToVerify {
    std::wstring program{}; // its folder is the installation folder
    // How to make it send a request to a host: its arguments, with {host} for the host's process
    // id. Empty: it cannot be made to, and what it would show is not seen.
    std::wstring openArguments{};
    std::wstring newFileArguments{};
    std::wstring checkInArguments{};
    std::int64_t boundMs = usualBoundMs;
};

// All rules, in the order in which they are checked.
Rules companionRules();

// Starts the program several times, plays a host, and ends what it started. Ends early when `stop`
// is signalled. Throws std::runtime_error when a Companion or a host is running, or when the
// program cannot be started at all.
Findings verifyCompanion(const CompanionToVerify& companion, HANDLE stop, const ShowFinding& show);

} // namespace zemlink
