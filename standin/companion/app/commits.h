// Takes commits from the commit files to which hosts append, and from the command line. For the
// thread of the window.
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
    std::wstring waitsFor;                     // why the first commit waits; empty: it does not
    std::optional<std::chrono::steady_clock::time_point>
        unreadableSince; // when its file first could not be read
};

// Closes a commit file that an earlier process with the same id has left. Call it before hosts can
// find this process.
void startCommits(State& state);

// Adds a commit from the command line; it is stored like those in the commit files. False when it
// cannot be written, which is logged as refused.
bool handInCommit(State& state, const std::wstring& file, std::optional<std::int64_t> id);

struct CommitProgress {
    bool isLibraryTouched = false; // it may have changed
    bool isMoreWaiting = false;
};

// Stores waiting commits for about 100 ms: those of ended processes, those of the command line,
// those for this process. Each ends with one of the events version, commit-known and commit-failed.
// When the library cannot be written, the first commit waits, and all later ones with it.
CommitProgress takeCommits(State& state);

// Stores all waiting commits. False when one cannot be stored now.
bool takeAllCommits(State& state);

// Stores all waiting commits and removes this process's commit file. Commits that cannot be stored
// remain for the next start. Call it when hosts can no longer find this process.
void finishCommits(State& state);

} // namespace companion
