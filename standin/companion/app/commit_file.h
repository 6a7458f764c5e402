// A commit request file, seen from its reader's side. docs/commit-records.md tells the whole
// protocol and why no record gets lost.
//
// A host finds the file's end, locks the bytes from there to the end of its record and writes them.
// Between its first and its second step the end must not move, so the file is never emptied, cut or
// deleted while a host could have it open: what has been taken is told by a bookmark beside it.
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

// What stands in the file behind the bookmark, or the first of it.
struct Waiting {
    std::string bytes;
    bool areAll = true;
    bool isClosed = false; // nobody can append to it any more
    FILETIME written{};    // when it was last written to
};

// The request file of that process with its bookmark; it need not exist. Completes a removal that
// was interrupted.
CommitFile findCommitFile(const std::wstring& folder, std::uint32_t process);

// The processes that have left a request file, or anything of one, in the folder.
std::vector<std::uint32_t> listCommitFiles(const std::wstring& folder);

// True when that process runs and is one of this program.
bool isRunningCompanion(std::uint32_t process);

// True when the request file exists, open or closed to hosts.
bool hasCommits(const CommitFile& file);

// Gives the file a name that no host knows. A host that has it open still writes its record into
// it; one that comes later makes a new file. True when that was done just now; false when there is
// no file, or an earlier one is closed and not yet removed.
bool closeToHosts(const CommitFile& file);

// Reads what waits, under the lock that hosts take too. Empty when a host is at it just now, or
// when there is no file; then look again later.
std::optional<Waiting> readWaiting(CommitFile& file);

// Keeps the bookmark. False when it cannot be written.
bool saveBookmark(const CommitFile& file);

// Removes a closed file, all of which has been taken, and its bookmark.
void removeCommitFile(CommitFile& file);

} // namespace companion
