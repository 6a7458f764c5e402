// The Companion's command line: what the hosts' add-in passes and what scripts pass instead of a
// click.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

enum class Word {
    none,           // no arguments: show the window
    checkOut,       // --checkout "FILE"
    commit,         // --commit "FILE" [--id N]
    about,          // --about --parentwindow N
    send,           // --send NAME [--host PID] [--machine PATH] [--ncpath N] [--id N]
    newFile,        // --new-file [--host PID] [--id N]
    checkIn,        // --check-in [--host PID]
    quit,           // --quit
    registerFolder, // --register
    help,           // --help
    notUnderstood   // anything else
};

struct Command {
    Word word = Word::none;
    std::wstring value{};                // the file of --checkout and --commit, the NAME of --send
    std::optional<std::uint32_t> host{}; // process id; absent: the first running host
    std::optional<std::uint32_t> parentWindow{}; // low 32 bits of a window handle
    std::optional<std::int64_t> id{};            // --commit: unsigned, else signed 32-bit
    std::optional<std::int32_t> ncPath{};        // absent: the library item's
    std::optional<std::wstring> machine{};       // absent: the library item's; empty: none
};

// The arguments, without the program's name.
//
// Arguments are separated by spaces; one that contains spaces is in double quotes. A backslash is
// an ordinary character, also before a quote, because the add-in quotes folder and file names
// without escaping: `--checkout "C:\temp\"` names C:\temp\.
// A word that lacks its value, a number out of range, an option given twice or an option that does
// not belong to the word gives Word::notUnderstood.
Command parseCommandLine(std::wstring_view arguments);

// All words with their values, options and effects, one indented line and one more for the effect
// each; from the table that `parseCommandLine` uses.
std::wstring commandLineHelp();

// The part of a process's command line after the program's name and the spaces that follow it.
std::wstring_view skipProgramName(std::wstring_view commandLine);

} // namespace peer
