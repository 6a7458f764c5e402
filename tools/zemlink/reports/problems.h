// The report of `zemlink doctor`.
#pragma once

#include "tools/zemlink/reports/facts.h"
#include "tools/zemlink/reports/report.h"

#include <string>
#include <vector>

namespace zemlink {

struct Problem {
    std::string name;   // `stale-command-file`
    std::string what;   // description, with the cause
    std::string advice; // how to fix it
};

// In the order in which to fix them. docs/zemlink.md lists them all.
std::vector<Problem> findProblems(const Facts& facts);

// Exit code `problem` unless the list is empty.
Outcome problemsOutcome(const std::vector<Problem>& problems);

} // namespace zemlink
