// The progress of loads, `sys\mcxlog.txt`: a line for each step of each load, for ever appended.
//
//   Loading File #1: C:\Parts\a.mcam
//   ...
//   Loading File #7: C:\Parts\a.mcam
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

struct LoggedLoad {
    std::string file{};   // bytes of the ANSI code page
    int lastStep = 0;     // 1 to 7
    std::string system{}; // the letters of its CAD system, told by a second line #3

    // The last step of a part is 7; a file of a CAD system ends with its second 3.
    bool isFinished() const { return lastStep == 7 || !system.empty(); }
};

struct LoadLog {
    std::vector<LoggedLoad> loads{};
    std::vector<size_t> badLines{}; // numbers of the lines that no load wrote, from 1
};

// Hosts that load at the same time write between each other's lines.
LoadLog readLoadLog(std::string_view bytes);

} // namespace zemlink
