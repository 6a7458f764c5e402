// The commands of the second host.
#pragma once

#include "tools/zemlink/verify/addin_commits.h"
#include "tools/zemlink/verify/addin_host.h"

#include <string>

namespace zemlink {

CommitParts commitParts(const AddInSite& site);

// The title of the main window at the end of a step: in the trace it shows that all commands of
// the step have been carried out.
std::string titleOf(CommitStep step);

std::string commitScript(const AddInSite& site, const CommitParts& parts);

} // namespace zemlink
