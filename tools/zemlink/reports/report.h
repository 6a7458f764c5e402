// The result of a command, from which both kinds of output are made.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace zemlink {

// Keys in the order in which they are shown; texts are UTF-8.
using Report = nlohmann::ordered_json;

// The program's exit codes.
inline constexpr int done = 0;
inline constexpr int problem = 1; // found one, or another error
inline constexpr int wrongUsage = 2;
inline constexpr int noHost = 3;    // or several
inline constexpr int notTaken = 4;  // a request
inline constexpr int notOpened = 5; // taken, but its file was not opened in time
inline constexpr int portInUse = 6;

struct Outcome {
    Report report{};
    int exitCode = done;
};

// The outcome of a command that failed: `error` with its name, what has happened and, if known,
// what to do.
Outcome failure(const std::string& name, const std::string& what, const std::string& advice = "",
                int exitCode = problem);

// The same for an error without a name.
inline Outcome failure(const std::string& cause)
{
    return failure("failed", cause);
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

enum class JsonLayout { indented, oneLine };

// The report as JSON, ended by a line feed. Texts that are not UTF-8 get replacement characters.
std::string jsonText(const Report& report, JsonLayout layout);

// The text of a report with colours for a terminal: the names of problems, and that there are none.
std::string coloured(const std::string& text);

// Replaces each character that would break the line, control the terminal or change the reading
// direction by its hexadecimal digits, `<0D>`.
std::string visible(const std::string& text);

// Two upper-case digits for each byte.
std::string hexadecimal(std::string_view bytes);

} // namespace zemlink
