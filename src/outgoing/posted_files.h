// The NC files that the host has posted, as they lie on disk.
#pragma once

#include <string>
#include <vector>

namespace torvapdm {

// The names, without their folder, of what matches this pattern; empty when nothing does. Pattern
// and names are in the system's ANSI code page.
std::vector<std::string> filesMatching(const std::string& pattern);

} // namespace torvapdm
