// A mutex without a handle. The event that MinGW-w64's std::mutex creates when two threads first
// meet at it, and then keeps, would be counted by the tests that look for leaked handles.
#pragma once

#include <windows.h>

namespace standin {

class Lock {
public:
    void lock() { AcquireSRWLockExclusive(&lock_); }
    void unlock() { ReleaseSRWLockExclusive(&lock_); }

private:
    SRWLOCK lock_{}; // as SRWLOCK_INIT
};

} // namespace standin
