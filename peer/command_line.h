// The words that a start of the program understands: what the host's add-in passes, and what
// scripts pass in place of a click. No platform header: plain text in, plain data out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

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

// Reads the arguments of a start, without the program's name.
//
// Arguments stand between blanks; one that holds blanks stands between double quotes. A backslash
// is an ordinary character, also in front of a quote, because the add-in quotes folder and file
// names as they are: `--checkout "C:\temp\"` names C:\temp\.
// A word that lacks its value, a number out of range, an option given twice or an option that does
// not belong to the word gives Word::notUnderstood.
Command readCommandLine(std::wstring_view arguments);

// The part of a process's command line behind the program's name and the blanks that follow it.
std::wstring_view skipProgramName(std::wstring_view commandLine);

} // namespace companion
