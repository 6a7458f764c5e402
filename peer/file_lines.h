// The lines of an exchange file.
#pragma once

#include <string_view>
#include <vector>

namespace companion {

// The lines without their ends, a line feed with or without a carriage return in front of it. The
// last line may lack its end. The texts lie in `bytes`.
std::vector<std::string_view> fileLines(std::string_view bytes);

} // namespace companion
