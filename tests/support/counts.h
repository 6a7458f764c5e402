// Counts of resources held by a process, and of objects the session can still create.
#pragma once

#include <cstddef>

namespace testing_support {

// The number of open handles of a process (by default this one). Exits with a message if the system
// does not list them.
size_t countHandles();
size_t countHandles(unsigned long processId);

// The number of threads of a process; 0 if the process does not exist.
size_t countThreads(unsigned long processId);

struct ProcessCounts {
    size_t handles = 0;
    size_t threads = 0;
    size_t privateBytes = 0; // committed and not shared
};

// All 0 if the process does not exist.
ProcessCounts countsOf(unsigned long processId);

// How many pens and how many menus can be created until the system refuses one. The numbers drop
// with every GDI object and every menu or window in use. All objects are destroyed again.
int countFreeGraphicsObjects();
int countFreeUserObjects();

} // namespace testing_support
