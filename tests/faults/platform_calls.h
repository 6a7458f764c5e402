// Makes the add-in's system calls fail on demand. The code under test is linked into the test
// program, whose import table is redirected.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace testing_support {

// Whose calls are counted and may fail: those of the watching thread or of the add-in's listener
// thread.
enum class Callers { thisThread, listener };

// The names of all calls that can be made to fail. "operator new" is this program's allocations; a
// failing one throws std::bad_alloc.
std::vector<std::string> platformCalls();

// Redirects this program's system calls until the process exits. Call it once.
void leadPlatformCalls();

// Counts the calls of these callers, starting from 0, and makes them fail on demand.
void watchPlatformCalls(Callers callers);
// Ends that and returns how often each call was made, if it was.
std::map<std::string, int> endWatchingPlatformCalls();

// From now on, makes the n-th watched call with this name fail, counted from 1, or every one for 0.
// An empty name stops all failures.
void failPlatformCall(const std::string& call, int nth = 0);

// How many programs and web pages would have been started since leadPlatformCalls; none is started.
int shellStarts();

// How many times threads other than the first one have called Sleep since leadPlatformCalls.
int pausesOfOtherThreads();

} // namespace testing_support
