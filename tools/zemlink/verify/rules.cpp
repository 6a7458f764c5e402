#include "tools/zemlink/verify/rules.h"

#include <algorithm>

namespace zemlink {

size_t countOf(const Findings& findings, RuleState state)
{
    const auto isInState = [state](const Finding& finding) { return finding.sight.state == state; };
    return static_cast<size_t>(std::count_if(findings.begin(), findings.end(), isInState));
}

} // namespace zemlink
