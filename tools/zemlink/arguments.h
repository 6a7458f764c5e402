// The command line.
#pragma once

#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

enum class Command {
    none,
    status,
    open,
    newFile,
    checkIn,
    listen,
    decode,
    doctor,
    watch,
    record,
    replay,
    report,
    verify
};

enum class VerifiedKind { companion, addIn };

struct Arguments {
    Command command = Command::none; // none: only print `text`
    bool isJson = false;
    std::int32_t id = 0;                 // open, newFile
    std::string path{};                  // the file; checkIn: its name; UTF-8
    std::optional<std::uint32_t> host{}; // open, newFile, checkIn, replay: process id
    std::optional<std::int64_t>
        timeoutMs{}; // open, newFile, checkIn, listen, watch, record, replay, verify
    std::optional<std::int64_t> count{}; // listen, watch
    std::optional<ExchangeKind> kind{};  // decode
    std::vector<EventKind> only{};       // watch; empty: all
    std::optional<std::int64_t> since{}; // watch; milliseconds since 1970, UTC
    bool isEverythingShown = false;      // doctor
    bool isUntilOpened = false;          // open
    bool isAtOnce = false;               // replay
    bool isRedacted = false;             // record, report
    std::string recording{};             // report: a recording's path, UTF-8; empty: none

    VerifiedKind verified = VerifiedKind::companion; // verify; `path` is the program or the host
    std::string library{}; // verify: the add-in's path, UTF-8; empty: none
    std::string junit{};   // verify: where to write the JUnit report, UTF-8; empty: nowhere
    // verify: what makes the Companion send a request, UTF-8; empty: nothing does
    std::string openArguments{}, newFileArguments{}, checkInArguments{};

    // Output of --help and --version, with exit code 0, or the error, with exit code 2.
    std::string text{};
    int exitCode = 0;
};

// A command as the pages and completions show it.
struct CommandSyntax {
    std::string name{};
    std::vector<std::string> options{}; // `--host`, without --help and --json
    std::string help{};                 // what --help shows
};

// All commands, in the order of --help.
std::vector<CommandSyntax> commandTable();

// The arguments are UTF-8, without the program's name.
Arguments parseArguments(std::vector<std::string> words);

} // namespace zemlink
