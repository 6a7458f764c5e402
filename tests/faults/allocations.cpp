// The program's own allocations. The libraries that it loads keep theirs.
#include "faults/call_watch.h"

#include <cstdlib>
#include <new>

void* operator new(size_t size)
{
    void* const block = testing_support::failsNow(testing_support::allocationNumber)
                            ? nullptr
                            : std::malloc(size == 0 ? 1 : size);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, size_t) noexcept
{
    std::free(block);
}
