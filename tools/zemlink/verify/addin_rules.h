// The rules for the add-in, checked from the side of the Companion, in a host that takes scripts.
#pragma once

#include "tools/zemlink/verify/rules.h"

#include <string>
#include <vector>
#include <windows.h>

namespace zemlink {

struct AddInToVerify {
    std::wstring host{};    // a program that takes --addin, --script and --trace
    std::wstring library{}; // the add-in
    std::int64_t boundMs = usualBoundMs;
};

// All of them, in the order of the findings.
Rules addInRules();

// Starts the host several times, plays the Companion in an installation folder of its own, and ends
// what it started. Ends early when `stop` is signalled. Throws std::runtime_error when a Companion
// or a host is running, or when the host does not open the add-in.
Findings verifyAddIn(const AddInToVerify& addIn, HANDLE stop, const ShowFinding& show);

} // namespace zemlink
