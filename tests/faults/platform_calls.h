// The add-in's calls into the system, made to fail on demand. The code under test is in the
// test's own program, whose import table is led through here.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace testing_support {

// Whose calls are counted and may fail: those of the thread that watches, or the add-in's
// listener's.
enum class Callers { thisThread, listener };

// How often a call was made while it was watched.
struct CallCount {
    std::string call;
    int count;
};

// The name under which allocations of the program's own code are counted; a failing one throws
// std::bad_alloc.
inline constexpr char allocation[] = "operator new";

// The names of all calls that can be made to fail, `allocation` among them.
std::vector<std::string> platformCalls();

// Leads the calls of this program through here, for the rest of its life. Call it once.
void leadPlatformCalls();

// Counts the calls of these callers, from 0, while it lives. One at a time.
class WatchedCalls {
public:
    explicit WatchedCalls(Callers callers);
    ~WatchedCalls();
    WatchedCalls(const WatchedCalls&) = delete;
    WatchedCalls& operator=(const WatchedCalls&) = delete;

    // The calls that were made at least once.
    std::vector<CallCount> made() const;
};

// The n-th watched call of this name fails from now on, n from 1; every one for 0. An empty name
// ends it.
void failPlatformCall(const std::string& call, int nth = 0);

// How many programs and pages were to be started since leadPlatformCalls; none is.
int shellStarts();

// How often threads other than the first have begun a pause (Sleep) since leadPlatformCalls.
int pausesOfOtherThreads();

} // namespace testing_support
