// The rules for commits, for the other notices and for the settings.
#pragma once

#include "tools/zemlink/verify/addin_commits.h"
#include "tools/zemlink/verify/rules.h"

#include <cstdint>

namespace zemlink {

Rules addInCommitRules();
Findings judgeCommits(const CommitsSeen& seen, std::int64_t tookMs);

} // namespace zemlink
