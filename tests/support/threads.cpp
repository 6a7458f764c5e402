#include "support/threads.h"

#include <windows.h>

#include <tlhelp32.h>

namespace testing_support {

size_t countThreads(unsigned long processId)
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    size_t found = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
        found += entry.th32OwnerProcessID == processId;
    CloseHandle(snapshot);
    return found;
}

} // namespace testing_support
