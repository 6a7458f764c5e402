// One decision under the fuzzers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

struct Target {
    const char* name; // as script/fuzz takes it
    // Hands the decision what these bytes stand for and compares its answer with that of the plain
    // rule: empty when they agree, else what differs.
    std::string (*check)(std::string_view bytes);
    std::vector<std::string> seeds;  // inputs that reach something, findings among them
    std::vector<std::string> tokens; // what the mutators put in beside random bytes
};

} // namespace fuzzing
