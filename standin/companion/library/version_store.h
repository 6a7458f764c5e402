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
    storedBefore, // the index already contains that version; nothing was done
    unreadable,   // the committed file is missing, locked or being changed
    unwritable    // the library or its index
};

struct CommittedFile {
    std::wstring path;
    // The screen picture belongs to it if it was written no later than this; empty: no picture.
    std::optional<FILETIME> pictureNotAfter{};
};

// The version that the file will become: the next version of the part with that number for which no
// file exists, or version 1 of a new part. Empty when the part has reached the largest version
// number.
std::optional<peer::VersionPlan> planVersion(const Library& library, const std::wstring& folder,
                                             std::optional<std::int32_t> part,
                                             const std::wstring& file);

// Carries out the plan: picture, part file and index in this order, each completely or not at all.
// After an interrupted try, even by the end of the program, the same plan continues where it
// stopped, so that it is stored once.
Storing storeVersion(Library& library, const std::wstring& folder, EventLog& log,
                     const peer::VersionPlan& plan, const CommittedFile& file);

// Moves the picture to this path, so that a later commit cannot use it. False when there is none,
// or when it was written after that time and so belongs to a later commit.
bool takeScreenPicture(const std::wstring& folder, const FILETIME& notAfter,
                       const std::wstring& to);

} // namespace companion
