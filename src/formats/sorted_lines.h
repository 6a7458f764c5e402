// Lists of 8-bit texts that are written in order and without repeats. No platform header.
#pragma once

#include <string>
#include <vector>

namespace torvapdm {

// Sorts the texts ascending by their bytes, taken as unsigned, and keeps one of each.
void sortAndDropRepeats(std::vector<std::string>& lines);

} // namespace torvapdm
