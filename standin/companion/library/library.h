// The part library on disk.
#pragma once

#include "standin/companion/library/library_index.h"
#include "standin/companion/log/event_log.h"

#include <optional>
#include <string>
#include <vector>
#include <string_view>

namespace companion {

struct Library {
    LibraryIndex index;
    std::vector<int> operations; // of each item's current version, in the order of the index
    std::optional<std::string>
        indexBytes; // as last read; empty before the first read and without an index
};

// Reads the library of this installation folder again if its index has changed, and logs it.
// Returns whether it had changed. A missing index is an empty library.
bool refreshLibrary(Library& library, const std::wstring& folder, EventLog& log);

// False while the index exists but cannot be read; the content of `library` is then not valid.
bool isReadable(const Library& library, const std::wstring& folder);

// Writes the index and uses it. False when it cannot be written; then nothing changes.
bool changeIndex(Library& library, const std::wstring& folder, const std::string& bytes);

// The part file of the item's current version.
std::wstring versionPath(const std::wstring& folder, const LibraryItem& item);

// The number of operations in the bytes of a part file; 0 for any other text.
int countOperations(std::string_view partFile);

} // namespace companion
