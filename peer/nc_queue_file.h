// The queue file of NC programs, `temp\ncqueue-<request id>.txt`: 8-bit text of the ANSI code page,
// a program a line, each line ended by CR LF, the lines sorted and none twice.
//
//   NCPATH|3|C:\NC\BRACKET.NC|Setup 1         NC path 3, program, top group of its operation
//   NCPATH|-1|C:\NC\PLATE.NC|left|right       no machine settings; the group is `left|right`
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

struct QueueEntry {
    std::int32_t pathNumber = 0; // -1: no machine settings were applied
    std::string program{};       // with its folder
    std::string group{};         // may be empty, and may hold bars
};

// One for each line of the file. A line that is none of these, or holds a control character, an
// empty one too, gives an empty one.
using QueueLines = std::vector<std::optional<QueueEntry>>;
QueueLines readQueue(std::string_view bytes);

// True for `ncqueue-17.txt`: only such a file is the Companion's to remove.
bool isQueueFileName(std::wstring_view fileName);

} // namespace companion
