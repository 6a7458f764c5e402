// Puts committed files into the library as new versions.
#pragma once

#include "standin/companion/library/library.h"
#include "standin/companion/library/version_plan.h"

#include <optional>
#include <string>
#include <windows.h>

namespace companion {

enum class Storing {
    stored,
    storedBefore, // the index tells of that version already; nothing was done
    unreadable,   // the committed file is missing, held by somebody or being changed
    unwritable    // the library or its index
};

struct CommittedFile {
    std::wstring path;
    // The screen picture belongs to it when it was made until then; empty: none does.
    std::optional<FILETIME> pictureNotAfter{};
};

// The version that the file would become: the next one of the part with that number that nothing in
// its folder is named after, or version 1 of a new part. Empty when the part has the last version
// that a number can tell.
std::optional<peer::VersionPlan> planVersion(const Library& library, const std::wstring& folder,
                                             std::optional<std::int32_t> part,
                                             const std::wstring& file);

// Carries the plan out: picture, part file and index in this order, each whole or not at all.
// Whatever ended an earlier try, also the program's end, the same plan goes on where that stopped,
// so it is stored once.
Storing storeVersion(Library& library, const std::wstring& folder, EventLog& log,
                     const peer::VersionPlan& plan, const CommittedFile& file);

// Moves the picture to this path, so that it can never be taken for a later commit's. False when
// there is none, or when it was made after that time and so belongs to a commit still to come.
bool takeScreenPicture(const std::wstring& folder, const FILETIME& notAfter,
                       const std::wstring& to);

} // namespace companion
