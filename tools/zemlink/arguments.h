// The command line.
#pragma once

#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

enum class Command { none, status, open, newFile, checkIn, listen, decode, doctor, watch, record };

struct Arguments {
    Command command = Command::none; // none: only print `text`
    bool isJson = false;
    std::int32_t id = 0;                     // open, newFile
    std::string path{};                      // open, decode, record; checkIn: the name; UTF-8
    std::optional<std::uint32_t> host{};     // open, newFile, checkIn: process id
    std::optional<std::int64_t> timeoutMs{}; // open, newFile, checkIn, listen, watch, record
    std::optional<std::int64_t> count{};     // listen, watch
    std::optional<ExchangeKind> kind{};      // decode
    std::vector<EventKind> only{};           // watch; empty: all
    std::optional<std::int64_t> since{};     // watch; milliseconds since 1970, UTC

    // Output of --help and --version, with exit code 0, or the error, with exit code 2.
    std::string text{};
    int exitCode = 0;
};

// The arguments are UTF-8, without the program's name.
Arguments parseArguments(std::vector<std::string> words);

} // namespace zemlink
