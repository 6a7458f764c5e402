// Changes to the library's index that leave everything else in it as it stands, byte for byte.
#pragma once

#include "standin/companion/library/library_index.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace companion {

// The index, as its bytes, with another version in this line, which holds an item.
std::string withVersion(std::string_view index, int line, std::int32_t version);

// The index, as its bytes, with one more line at its end. An empty index gets a heading first.
std::string withLine(std::string_view index, std::string_view line);

// `43 | plate | 1 | 0 |  | From C:\parts\plate.mcam`
std::wstring indexLine(const LibraryItem& item);

} // namespace companion
