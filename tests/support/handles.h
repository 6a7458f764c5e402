// The handles that this process holds.
#pragma once

#include <cstddef>

namespace testing_support {

// How many handles this process has open; ends the test program with a message when the system does
// not say.
size_t countHandles();

} // namespace testing_support
