// The command file's rule once more, plainly: for the fuzzer, and for the run of many command files
// through a host.
#pragma once

#include "formats/command_file.h"

#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

torvapdm::Command plainRequest(std::string_view text);

// Command files that reach each branch of the rule.
std::vector<std::string> commandTextSeeds();
std::vector<std::string> commandTextTokens();

} // namespace fuzzing
