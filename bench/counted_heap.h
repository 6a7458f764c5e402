// The memory that the add-in's own code holds, to the byte.
//
// The add-in's code stands in this program, so that each of its allocations goes through this
// program's `operator new`, which counts. The measure is the peak of the bytes held during a run
// above those held before it. The process's private bytes would not do: they grow by whole regions
// that the heap keeps, and they hold the host's copy of the chain and the C library's buffers as
// well. The count knows the add-in's own blocks alone and is the same in every run; what the heap
// itself adds to a block is left out.
#pragma once

#include "bench/paired.h"

#include <cstddef>

namespace bench {

// The most bytes that were held at once while the work ran, above those held before it.
size_t peakBytesOf(const Work& work);

} // namespace bench
