// Which version of which part a committed file becomes.
#pragma once

#include "peer/bookmark.h"
#include "standin/companion/library/library_index.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace companion {

// `bracket\v2.bmp`, relative to the library folder.
std::wstring pictureFile(const peer::VersionPlan& plan);
// `bracket\v2.mcam`, relative to the library folder.
std::wstring versionFile(const peer::VersionPlan& plan);

// True when the index tells of that version of that part, or of a later one.
bool isInIndex(const LibraryIndex& index, const peer::VersionPlan& plan);

// The number of a new part: behind the largest one, as long as there is such a number.
std::int32_t freeNumber(const LibraryIndex& index);

// The name of a new part: the file's, without its extension and without what a folder or the index
// cannot hold, and with `-2`, `-3`, … where the library has that name already.
std::wstring newPartName(const LibraryIndex& index, std::wstring_view file);

} // namespace companion
