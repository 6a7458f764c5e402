// What a scenario leaves behind: what the user saw, and what lies on disk.
#pragma once

#include "support/bytes.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

struct Change {
    enum class Kind { made, grown, rewritten, gone };

    std::wstring file; // below the installation folder, the process id as "PID"
    Kind kind;

    bool operator==(const Change&) const = default;
};

struct Outcome {
    Lines trace;                     // what the host was asked to do
    std::vector<std::wstring> boxes; // texts of the message boxes, in order
    std::vector<Change> changes;     // by the files' names
    int starts = 0;                  // of the Companion or the browser
    std::string escaped;             // what came out of the add-in; empty for nothing

    bool operator==(const Outcome&) const = default;
};

// The files below a folder with their bytes; one that cannot be read counts as empty. The user's
// temporary folder is left out: what lies there goes when its last handle is closed.
using Files = std::map<std::wstring, std::string>;
Files filesBelow(const std::wstring& folder);

std::vector<Change> changesBetween(const Files& before, const Files& after);

// The texts of the boxes that the trace shows.
std::vector<std::wstring> boxesIn(const Lines& trace);

// As the table of faults writes it: "nothing" or the texts in quotation marks with "a start" for
// each program started, and "nothing" or "made temp\x, rewritten parts\a.mcam".
std::string seenByUser(const Outcome& outcome);
std::string leftOnDisk(const Outcome& outcome);

} // namespace testing_support
