// Makes the add-in's system calls fail on demand. The code under test is linked into the test
// program, whose import table is redirected.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace testing_support {

// Whose calls are counted and may fail: those of the watching thread or of the add-in's listener
// thread.
enum class Callers { thisThread, listener };

// How often a call was made while watched.
struct CallCount {
    std::string call;
    int count;
};

// The name under which this program's allocations are counted; a failing one throws std::bad_alloc.
inline constexpr char allocation[] = "operator new";

// The names of all calls that can be made to fail, including `allocation`.
std::vector<std::string> platformCalls();

// Redirects this program's system calls until the process exits. Call it once.
void leadPlatformCalls();

// While it exists, counts the calls of these callers, starting from 0. Only one may exist.
class WatchedCalls {
public:
    explicit WatchedCalls(Callers callers);
    ~WatchedCalls();
    WatchedCalls(const WatchedCalls&) = delete;
    WatchedCalls& operator=(const WatchedCalls&) = delete;

    // The calls that were made at least once.
    std::vector<CallCount> made() const;
};

// From now on, makes the n-th watched call with this name fail, counted from 1, or every one for 0.
// An empty name stops all failures.
void failPlatformCall(const std::string& call, int nth = 0);

// How many programs and web pages would have been started since leadPlatformCalls; none is started.
int shellStarts();

// How many times threads other than the first one have called Sleep since leadPlatformCalls.
int pausesOfOtherThreads();

} // namespace testing_support
