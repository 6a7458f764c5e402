// The threads of a process.
#pragma once

#include <cstddef>

namespace testing_support {

// How many threads the process with this id has; 0 when there is no such process.
size_t countThreads(unsigned long processId);

} // namespace testing_support
