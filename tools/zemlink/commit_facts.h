// The commit requests that lie in an installation.
#pragma once

#include "tools/zemlink/facts.h"

#include <string>
#include <vector>

namespace zemlink {

// Each commit request file of the folder, in order of process id, with what waits in it. Takes no
// lock, so that it stands in nobody's way.
std::vector<CommitFile> findCommitFiles(const std::wstring& folder);

} // namespace zemlink
