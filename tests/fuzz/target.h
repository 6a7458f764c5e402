// The pure functions that the fuzzers test.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

struct Target {
    const char* name; // as passed to script/fuzz
    // Calls the function with the arguments encoded in these bytes and compares its result with the
    // Companion's parser, or with the reference implementation if there is none. Returns the
    // differences, or an empty string.
    std::string (*check)(std::string_view bytes);
    std::vector<std::string> seeds;  // valid inputs and earlier findings
    std::vector<std::string> tokens; // inserted by the mutators in addition to random bytes
};

Target commandTextTarget();
std::vector<Target> formatTargets();
std::vector<Target> recordTargets();
std::vector<Target> addInTargets();
std::vector<Target> pictureTargets();

std::vector<Target> allTargets();

} // namespace fuzzing
