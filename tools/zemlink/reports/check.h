// What `zemlink doctor` looks at, one check for each kind of problem.
#pragma once

#include "tools/zemlink/reports/facts.h"

#include <string>
#include <vector>

namespace zemlink {

struct Problem {
    std::string name;   // `stale-command-file`
    std::string what;   // description, with the cause
    std::string advice; // how to fix it
};

using Problems = std::vector<Problem>;

struct Check {
    const char* name; // of its problems
    const char* fine; // what is true when it finds nothing
    void (*find)(Problems& problems, const Facts& facts);
    bool (*isMade)(const Facts& facts); // false where there is nothing to look at
};

inline bool always(const Facts&)
{
    return true;
}

} // namespace zemlink
