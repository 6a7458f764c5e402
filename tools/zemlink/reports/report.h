// The result of a command, from which both kinds of output are made.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace zemlink {

// Keys in the order in which they are shown; texts are UTF-8.
using Report = nlohmann::ordered_json;

// The program's exit codes.
inline constexpr int done = 0;
inline constexpr int problem = 1; // found one, or a request was not taken
inline constexpr int wrongUsage = 2;

struct Outcome {
    Report report{};
    int exitCode = done;
};

// The outcome of a command that failed; the report holds only the cause.
inline Outcome failure(const std::string& cause)
{
    return {Report{{"error", cause}}, problem};
}

// The report as text: one line for each value, `key: value`, each ended by a line feed. The values
// of a key are below it, indented by two spaces; each entry of a list starts with a dash.
//
//   installation:
//     folder: C:\TORVA\ZEM
//   hosts:
//     - process: 4711
//       title: bracket.mcam
//   commits waiting: none
//
// A key `likeThis` is shown as `like this`; one that starts with a capital is not changed.
// Texts are passed through `visible`.
std::string asText(const Report& report);

// Replaces each character that would break the line, control the terminal or change the reading
// direction by its hexadecimal digits, `<0D>`.
std::string visible(const std::string& text);

} // namespace zemlink
