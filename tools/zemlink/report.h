// What a command found out, in the form that both kinds of output are made from.
#pragma once

#include <nlohmann/json.hpp>

namespace zemlink {

// Keys in the order in which they are shown; texts are UTF-8.
using Report = nlohmann::ordered_json;

// The program's exit codes.
inline constexpr int done = 0;
inline constexpr int trouble = 1; // found, or a request that was not taken
inline constexpr int wrongUsage = 2;

struct Outcome {
    Report report{};
    int exitCode = done;
};

// A command that could not do its work: the cause is all there is to say.
inline Outcome failure(const std::string& cause)
{
    return {Report{{"error", cause}}, trouble};
}

} // namespace zemlink
