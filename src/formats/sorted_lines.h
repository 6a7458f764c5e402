// The order of the lines in the tool data file and the NC queue file. No platform header.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace torvapdm {

// Sorts the texts ascending by their bytes, compared as unsigned, and removes duplicates.
inline void sortAndRemoveDuplicates(std::vector<std::string>& lines)
{
    // The comparisons take the time, since most lines begin alike; this sort makes fewest.
    std::stable_sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
}

} // namespace torvapdm
