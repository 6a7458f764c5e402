// Posting: writing the NC programs of the open part to disk.
#pragma once

#include "host/import.h"

#include <string>
#include <vector>

namespace standin {

// Writes one program for each NCI name of the part's operations, with the host's NC prefix and
// suffix, and returns the paths written. Creates the prefix's folder if it does not exist.
// Operations without an NCI name have no program.
MCCORE_API std::vector<std::wstring> postNcPrograms();

} // namespace standin
