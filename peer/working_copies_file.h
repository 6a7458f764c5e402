// The Companion's list of working files, `sys\working-copies.txt`: UTF-8, one copy a line, `-` for
// no id and 0 for no part.
//
//   17 | 17 | C:\TORVA\ZEM\work\bracket.mcam     sent with request id 17
//   - | 43 | C:\parts\plate.mcam                 committed without having been sent
//   5 | 0 |                                      request id 5 asked for a new file
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

struct WorkingCopy {
    std::optional<std::int32_t> id{}; // of the request that sent it
    std::int32_t number = 0;          // of the part; 0: none yet
    std::wstring path{};              // empty: none yet
};

// One entry for each line; empty for a line that is not a working copy.
std::vector<std::optional<WorkingCopy>> parseWorkingCopies(std::wstring_view text);

// The line with its line feed.
std::wstring formatWorkingCopy(const WorkingCopy& copy);

} // namespace peer
