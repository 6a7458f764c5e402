// Which watched call is to fail. Everything here may be asked from inside an allocation.
#pragma once

#include "faults/platform_calls.h"

#include <atomic>
#include <windows.h>

namespace testing_support {

inline constexpr size_t mostCalls = 128;

struct CallWatch {
    std::atomic<bool> isOn{false};
    DWORD thread = 0; // whose calls are watched
    std::atomic<int> failing{-1};
    std::atomic<int> nth{0};
    std::atomic<int> counts[mostCalls]{};
};

inline CallWatch callWatch;

// Counts the call of this number; true when it is to fail.
inline bool failsNow(int number)
{
    CallWatch& watch = callWatch;
    if (!watch.isOn || GetCurrentThreadId() != watch.thread)
        return false;
    const int count = ++watch.counts[number];
    return number == watch.failing && (watch.nth == 0 || watch.nth == count);
}

// The number of `allocation`; the others' follow it.
inline constexpr int allocationNumber = 0;

} // namespace testing_support
