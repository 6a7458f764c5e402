// A commit file, from its reader's side. docs/commit-records.md describes the whole protocol and
// why no record gets lost.
//
// A host reads the end of the file, locks the bytes from there to the end of its record and writes
// them. In between the end must not move, so the file is never truncated or deleted while a host
// may have it open: a bookmark in another file holds how much has been taken.
#pragma once

#include "peer/bookmark.h"
#include "peer/exchange_paths.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace companion {

struct CommitFile {
    std::uint32_t process = 0; // whose commits these are
    peer::CommitPaths paths;
    peer::Bookmark bookmark;
};

// The bytes after the bookmark, or the first of them.
struct Waiting {
    std::string bytes;
    bool areAll = true;
    bool isClosed = false; // hosts can no longer append to it
    FILETIME written{};    // when it was last written to
};

// The commit file of that process with its bookmark; it need not exist. Completes an interrupted
// removal.
CommitFile findCommitFile(const std::wstring& folder, std::uint32_t process);

// The processes with a commit file or a bookmark in the folder.
std::vector<std::uint32_t> listCommitFiles(const std::wstring& folder);

// True when that process is running and is a Companion.
bool isRunningCompanion(std::uint32_t process);

// True when the commit file exists, live or closed.
bool hasCommits(const CommitFile& file);

// Renames the file so that hosts no longer find it. A host that has it open still writes its
// record; a later one creates a new file. True when it was renamed; false when there is no file, or
// an earlier one is closed and not yet removed.
bool closeToHosts(const CommitFile& file);

// Reads the waiting bytes under the lock that hosts take. Empty when a host is writing or when
// there is no file; then retry later.
std::optional<Waiting> readWaiting(CommitFile& file);

// Writes the bookmark. False on failure.
bool saveBookmark(const CommitFile& file);

// Deletes a closed file that has been taken completely, and its bookmark.
void removeCommitFile(CommitFile& file);

} // namespace companion
