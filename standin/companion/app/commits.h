// Takes commits back: out of the request files that hosts append to, and from the command line.
// Everything here belongs to the thread of the window.
#pragma once

#include "standin/companion/app/commit_file.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace companion {

struct State;

struct Commits {
    std::map<std::uint32_t, CommitFile> files; // by process, as last seen
    std::wstring waitsFor;                     // what the first commit waits for; empty: nothing
    std::optional<std::chrono::steady_clock::time_point> unreadableSince; // its file
};

// Closes a request file that an earlier process of the same id left. Call it before a host can find
// this process.
void startCommits(State& state);

// Hands in a commit of the command line; it is kept and stored as those of the request files are.
// False when it cannot be kept, which is then logged as refused.
bool handInCommit(State& state, const std::wstring& file, std::optional<std::int64_t> id);

struct CommitProgress {
    bool isLibraryTouched = false; // it may have changed
    bool isMoreWaiting = false;
};

// Looks for commits and stores what waits, for about a tenth of a second: those that ended
// processes of this program left, those of the command line, those for this process. Each ends in
// one of the events version, commit-known and commit-failed. When the library cannot be written,
// the first one waits, and those behind it with it.
CommitProgress takeCommits(State& state);

// Takes all that waits. False when a commit cannot be stored now.
bool takeAllCommits(State& state);

// Takes all that waits and removes this process's request file. What cannot be stored stays for the
// next start. Call it when hosts can no longer find this process.
void finishCommits(State& state);

} // namespace companion
