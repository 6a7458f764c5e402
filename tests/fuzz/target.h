// The pure functions that the fuzzers test.
#pragma once

#include "fuzz/differences.h"
#include "fuzz/input.h"

#include <string>
#include <vector>

namespace fuzzing {

struct Target {
    const char* name; // as passed to script/fuzz
    // Calls the function with the arguments encoded in the input and compares its result with the
    // Companion's parser, or with the reference implementation if there is none.
    void (*check)(Input& input, Differences& differences);
    std::vector<std::string> seeds;  // valid inputs and earlier findings
    std::vector<std::string> tokens; // inserted by the mutators in addition to random bytes

    // The differences for these bytes, or an empty string.
    std::string differencesFor(std::string_view bytes) const
    {
        Input input(bytes);
        Differences differences;
        check(input, differences);
        return differences.text();
    }
};

std::vector<Target> formatTargets(); // the first one is `command_text`
std::vector<Target> recordTargets();
std::vector<Target> pictureTargets();

inline std::vector<Target> allTargets()
{
    std::vector<Target> all = formatTargets();
    for (const auto& targets : {recordTargets(), pictureTargets()})
        all.insert(all.end(), targets.begin(), targets.end());
    return all;
}

} // namespace fuzzing
