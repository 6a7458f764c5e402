// Posting: writing the NC programs of the open part to disk.
#pragma once

#include "host/import.h"

#include <string>
#include <vector>

namespace standin {

// Writes one program for each NCI name of the part's operations, under the host's NC prefix and
// suffix, and gives the paths written. Makes the prefix's folder when it is missing. Operations
// without an NCI name have no program.
MCCORE_API std::vector<std::wstring> postNcPrograms();

} // namespace standin
