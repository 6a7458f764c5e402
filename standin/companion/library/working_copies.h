// Which library part a working file of a host belongs to. The list is stored in
// `sys\working-copies.txt`; later lines take precedence.
#pragma once

#include "peer/commit_record.h"
#include "peer/working_copies_file.h"
#include "standin/companion/library/library_index.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

using peer::WorkingCopy;
using WorkingCopies = std::vector<WorkingCopy>;

// Other lines are ignored.
WorkingCopies readWorkingCopies(std::wstring_view text);
std::wstring workingCopiesText(const WorkingCopies& copies);

// Adds a copy. An earlier one with the same path or id loses that path or id, and is removed when
// it has neither.
void noteWorkingCopy(WorkingCopies& copies, const WorkingCopy& copy);

// The part of a committed file: the one whose working copy the file is, because a version must
// never be stored under another part; else the one that was sent with the id, for a file that was
// saved under another name; else the one with the id as its number. Empty for a new part. The ids
// 0, which hosts have after a check-in, and 4294967295 are ignored.
std::optional<std::int32_t> partOfCommit(const WorkingCopies& copies, const LibraryIndex& index,
                                         const peer::CommitRecord& record);

struct CopyList {
    std::wstring path; // of its file
    WorkingCopies copies;
};

// A file that is missing or cannot be read gives an empty list.
CopyList readCopyList(const std::wstring& path);

// Adds the copy and writes the file. If that fails, this process still knows the copy.
void keepCopy(CopyList& list, const WorkingCopy& copy);

} // namespace companion
