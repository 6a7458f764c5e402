// The memory allocated by the add-in's own code, in bytes.
//
// The add-in's code is linked into this program, so its allocations go through this program's
// `operator new`, which counts them. The figure is the peak of the allocated bytes during a run
// minus those before it. The process's private bytes are unsuitable: they grow by whole heap
// regions and include the host's copy of the chain and the C library's buffers. The heap's own
// overhead per block is not included.
#pragma once

#include "bench/paired.h"

#include <cstddef>

namespace bench {

// The peak of the allocated bytes while the work ran, minus those allocated before it.
size_t peakBytesOf(const Work& work);

} // namespace bench
