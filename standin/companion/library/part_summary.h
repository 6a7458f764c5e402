// What the library list tells about a part file.
#pragma once

#include <string_view>

namespace companion {

// The number of operations of a part file, given as its bytes. A text that is no part file has 0.
int countOperations(std::string_view partFile);

} // namespace companion
