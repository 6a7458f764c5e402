#include "bench/counted_heap.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// Atomic, since other threads allocate as well. Counts only during peakBytesOf: asking the heap for
// a block's size takes time that would distort other measurements.
std::atomic<bool> isCounting{false};
std::atomic<std::ptrdiff_t> heldBytes{0}; // minus those before the run
std::atomic<std::ptrdiff_t> peakBytes{0};

std::ptrdiff_t sizeOf(void* block)
{
    return static_cast<std::ptrdiff_t>(_msize(block));
}

void notePeak(std::ptrdiff_t held)
{
    std::ptrdiff_t peak = peakBytes;
    while (held > peak && !peakBytes.compare_exchange_weak(peak, held))
        ;
}

} // namespace

void* operator new(size_t size)
{
    void* const block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    if (isCounting)
        notePeak(heldBytes += sizeOf(block));
    return block;
}

void operator delete(void* block) noexcept
{
    if (block && isCounting)
        heldBytes -= sizeOf(block);
    std::free(block);
}

void operator delete(void* block, size_t) noexcept
{
    operator delete(block);
}

namespace bench {

size_t peakBytesOf(const Work& work)
{
    heldBytes = 0;
    peakBytes = 0;
    isCounting = true;
    work();
    isCounting = false;
    return static_cast<size_t>(peakBytes);
}

} // namespace bench
