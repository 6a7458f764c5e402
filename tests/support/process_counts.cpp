#include "support/process_counts.h"

#include "support/handles.h"
#include "support/threads.h"

#include <windows.h>

namespace testing_support {

namespace {

// The committed memory that the process shares with nobody. Its regions are walked, because not
// every system fills in the counter of its own.
size_t privateBytesOf(HANDLE process)
{
    size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region{};
    const BYTE* address = nullptr;
    while (VirtualQueryEx(process, address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE)
            bytes += region.RegionSize;
        address = static_cast<const BYTE*>(region.BaseAddress) + region.RegionSize;
    }
    return bytes;
}

} // namespace

ProcessCounts countsOf(unsigned long processId)
{
    ProcessCounts counts = {countHandles(processId), countThreads(processId), 0};
    const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, processId);
    if (!process)
        return counts;
    counts.privateBytes = privateBytesOf(process);
    CloseHandle(process);
    return counts;
}

} // namespace testing_support
