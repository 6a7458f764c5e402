// Comparison of names and paths that differ in their case at most.
#pragma once

#include <string_view>

namespace companion {

// True when the texts are the same but for the case of the letters A to Z.
bool isSameIgnoringCase(std::wstring_view a, std::wstring_view b);

} // namespace companion
