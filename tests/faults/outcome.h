// What a scenario leaves: what the user saw, and what is on disk.
#pragma once

#include "support/bytes.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

// "made", "grown", "rewritten" or "gone", by the files' names below the installation folder, with
// the process id as "PID".
using Changes = std::map<std::wstring, std::string>;

struct Outcome {
    Lines trace;                     // what the host was asked to do
    std::vector<std::wstring> boxes; // texts of the message boxes, in order
    Changes changes;
    int starts = 0;      // of the Companion or the browser
    std::string escaped; // what came out of the add-in; empty for nothing

    bool operator==(const Outcome&) const = default;
};

// The files below a folder with their bytes; one that cannot be read counts as empty. The user's
// temporary folder is left out: what is there goes when its last handle is closed.
using Files = std::map<std::wstring, std::string>;
Files filesBelow(const std::wstring& folder);

Changes changesBetween(const Files& before, const Files& after);

// The texts of the boxes that the trace shows.
std::vector<std::wstring> boxesIn(const Lines& trace);

// As the table of faults writes it: "nothing" or the texts in quotation marks with "a start" for
// each program started, and "nothing" or "made temp\x, rewritten parts\a.mcam".
std::string seenByUser(const Outcome& outcome);
std::string leftOnDisk(const Outcome& outcome);

} // namespace testing_support
