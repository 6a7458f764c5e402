// The list of recently opened files. No platform header.
#pragma once

#include "formats/companion_file.h"

#include <vector>

namespace torvapdm {

// Inserts the file at the front. An entry with exactly the same path is removed, and then the
// oldest entry when more than 20 are left.
void addRecentFile(std::vector<CompanionFile>& files, const CompanionFile& file);

} // namespace torvapdm
