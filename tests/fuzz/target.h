// The pure functions that the fuzzers drive.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

struct Target {
    const char* name; // as script/fuzz takes it
    // Passes the function what these bytes stand for and compares its result with the Companion's
    // reading, or with the plain rule where there is none: empty when they agree, else what
    // differs.
    std::string (*check)(std::string_view bytes);
    std::vector<std::string> seeds;  // inputs that reach something, findings among them
    std::vector<std::string> tokens; // what the mutators insert in addition to random bytes
};

Target commandTextTarget();
std::vector<Target> formatTargets();
std::vector<Target> recordTargets();
std::vector<Target> addInTargets();
std::vector<Target> pictureTargets();

std::vector<Target> allTargets();

} // namespace fuzzing
