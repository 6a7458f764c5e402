// The list of working copies, kept in its file.
#pragma once

#include "standin/companion/library/working_copies.h"

#include <string>

namespace companion {

struct CopyList {
    std::wstring path; // of its file
    WorkingCopies copies;
};

// A file that is missing or cannot be read gives an empty list.
CopyList readCopyList(const std::wstring& path);

// Adds the copy, also in the file. When that cannot be written, this process knows it all the same.
void keepCopy(CopyList& list, const WorkingCopy& copy);

} // namespace companion
