// The queue file of NC programs, `temp\ncqueue-<request id>.txt`: 8-bit text in the ANSI code page,
// one program a line, each line ended by CR LF, sorted and without duplicates.
//
//   NCPATH|3|C:\NC\BRACKET.NC|Setup 1         NC path 3, program, top group of its operation
//   NCPATH|-1|C:\NC\PLATE.NC|left|right       no machine settings; the group is `left|right`
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

struct QueueEntry {
    std::int32_t pathNumber = 0; // -1: no machine settings were applied
    std::string program{};       // with its folder
    std::string group{};         // may be empty, and may contain `|`
};

// One for each line of the file; empty for a line that is not an entry or contains a control
// character.
using QueueLines = std::vector<std::optional<QueueEntry>>;
QueueLines parseNcQueue(std::string_view bytes);

// True for `ncqueue-17.txt`. The Companion removes no other file.
bool isQueueFileName(std::wstring_view fileName);

} // namespace peer
