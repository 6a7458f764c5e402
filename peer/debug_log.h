// The progress of loads, `sys\mcxlog.txt`: one line for each step of each load, always appended.
//
//   Loading File #1: C:\Parts\a.mcam
//   ...
//   Loading File #7: C:\Parts\a.mcam
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

// What one line says.
struct LoadStep {
    int number = 0;     // 1 to 7; 0: the line is not a step
    std::string text{}; // the file's path or, in a second step 3, the letters of its CAD system
};

// `line`: with or without its end.
LoadStep parseLoadStep(std::string_view line);

struct LoggedLoad {
    std::string file{};   // bytes in the ANSI code page
    int lastStep = 0;     // 1 to 7
    std::string system{}; // the letters of its CAD system, from a second line #3

    // The last step of a part is 7; the load of a CAD file ends with its second step 3.
    bool isFinished() const { return lastStep == 7 || !system.empty(); }
};

struct DebugLog {
    std::vector<LoggedLoad> loads{};
    std::vector<size_t> badLines{}; // numbers, from 1, of lines that belong to no load
};

// The lines of hosts that load at the same time are interleaved.
DebugLog parseDebugLog(std::string_view bytes);

} // namespace peer
