// The lines of a text, and a comparison that ignores case. No platform header.
#pragma once

#include <string_view>
#include <vector>

namespace peer {

// The lines without their ends: a line feed, with or without a carriage return before it. The last
// line may lack its end. The results refer to `bytes`.
std::vector<std::string_view> fileLines(std::string_view bytes);

// Ignores the case of the letters A to Z.
bool isSameIgnoringCase(std::wstring_view a, std::wstring_view b);

} // namespace peer
