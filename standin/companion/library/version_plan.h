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

// True when the index contains that version of the part, or a later one.
bool isInIndex(const LibraryIndex& index, const peer::VersionPlan& plan);

// The number of a new part: after the largest one, or any free one if that is the largest possible.
std::int32_t freeNumber(const LibraryIndex& index);

// The name of a new part: the file name without its extension and without characters that a folder
// or the index cannot contain; with `-2`, `-3`, … if the library already has that name.
std::wstring newPartName(const LibraryIndex& index, std::wstring_view file);

} // namespace companion
