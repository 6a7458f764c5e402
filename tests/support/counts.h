// What a process holds, and what the session can still make.
#pragma once

#include <cstddef>

namespace testing_support {

// How many handles a process has open, this one's if none is named; ends the test program with a
// message when the system does not list them.
size_t countHandles();
size_t countHandles(unsigned long processId);

// How many threads a process has; 0 when there is no such process.
size_t countThreads(unsigned long processId);

struct ProcessCounts {
    size_t handles = 0;
    size_t threads = 0;
    size_t privateBytes = 0; // committed and not shared
};

// All 0 for a process that does not exist.
ProcessCounts countsOf(unsigned long processId);

// How many pens and how many menus can be made until the system refuses one: fewer by each graphics
// object, and by each menu or window, that is held. All of them are destroyed again.
int countFreeGraphicsObjects();
int countFreeUserObjects();

} // namespace testing_support
