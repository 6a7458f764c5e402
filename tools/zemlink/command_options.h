// The commands and options of the command line, as its parser needs them.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace zemlink {

// What the line gave, before the command is known. 0 and empty: not given.
struct Given {
    std::int64_t id = 0, host = 0, timeoutSeconds = 0, count = 0;
    std::string path{}, kind{}, since{}, recording{};
    std::string verified{}, library{}, junit{}; // of verify
    std::string openArguments{}, newFileArguments{}, checkInArguments{};
    std::vector<std::string> only{};
    bool isEverythingShown = false, isUntilOpened = false, isAtOnce = false, isRedacted = false;
};

// Adds all commands, with their options and examples. What is given is stored when the line is
// parsed.
void describe(CLI::App& app, Given& given, bool& isJson);

} // namespace zemlink
