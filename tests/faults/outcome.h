// The result of a scenario: what the user saw, and the changes on disk.
#pragma once

#include "support/bytes.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

// "made", "grown", "rewritten" or "gone" by file name below the installation folder, with the
// process id replaced by "PID".
using Changes = std::map<std::wstring, std::string>;

struct Outcome {
    Lines trace;                     // calls to the host
    std::vector<std::wstring> boxes; // texts of the message boxes, in order
    Changes changes;
    int starts = 0;      // starts of the Companion or the browser
    std::string escaped; // exception that left the add-in; empty for none

    bool operator==(const Outcome&) const = default;
};

// The files below a folder with their content; empty content for a file that cannot be read.
// Excludes the user's temporary folder, whose files are deleted when their last handle is closed.
using Files = std::map<std::wstring, std::string>;
Files filesBelow(const std::wstring& folder);

Changes changesBetween(const Files& before, const Files& after);

// The texts of the message boxes in the trace.
std::vector<std::wstring> boxesIn(const Lines& trace);

// In the format of the fault table: "nothing" or the quoted texts, with "a start" for each program
// started; and "nothing" or "made temp\x, rewritten parts\a.mcam".
std::string seenByUser(const Outcome& outcome);
std::string leftOnDisk(const Outcome& outcome);

} // namespace testing_support
