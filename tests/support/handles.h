// The handles that a process holds.
#pragma once

#include <cstddef>

namespace testing_support {

// How many handles this process has open; ends the test program with a message when the system does
// not say.
size_t countHandles();
// How many handles the process with this id has open.
size_t countHandles(unsigned long processId);

} // namespace testing_support
