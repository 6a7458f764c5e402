// What a process holds, seen from outside it.
#pragma once

#include <cstddef>

namespace testing_support {

struct ProcessCounts {
    size_t handles = 0;
    size_t threads = 0;
    size_t privateBytes = 0; // committed and shared with nobody
};

// Zeros for a process that is not there.
ProcessCounts countsOf(unsigned long processId);

} // namespace testing_support
