// Counts of resources held by a process, and of objects the session can still create.
#pragma once

#include "peer/handle.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <vector>
#include <windows.h>
// Must come after windows.h.
#include <tlhelp32.h>

namespace testing_support {

// The number of open handles of a process. Exits with a message if the system does not list them.
inline size_t countHandles(DWORD processId = GetCurrentProcessId())
{
    // Not declared in any header.
    struct HandleRow {
        void* object;
        ULONG_PTR processId, handle;
        ULONG access;
        USHORT traceIndex, typeIndex;
        ULONG attributes, reserved;
    };
    struct HandleTable {
        ULONG_PTR count, reserved;
        HandleRow rows[1];
    };
    using Query = LONG(WINAPI*)(ULONG kind, void* bytes, ULONG size, ULONG* needed);
    constexpr ULONG extendedHandleInformation = 64;
    const auto query = std::bit_cast<Query>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation"));
    std::vector<BYTE> bytes(8 << 20);
    ULONG size = 0;
    if (query(extendedHandleInformation, bytes.data(), static_cast<ULONG>(bytes.size()), &size)) {
        std::fprintf(stderr, "the system does not list its handles\n");
        std::exit(99);
    }
    const auto* const table = reinterpret_cast<const HandleTable*>(bytes.data());
    size_t found = 0;
    for (ULONG_PTR i = 0; i < table->count; ++i)
        found += table->rows[i].processId == processId;
    return found;
}

// The number of threads of a process; 0 if the process does not exist.
inline size_t countThreads(DWORD processId)
{
    const peer::OwnHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    size_t found = 0;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more;
         more = Thread32Next(snapshot.get(), &entry))
        found += entry.th32OwnerProcessID == processId;
    return found;
}

struct ProcessCounts {
    size_t handles = 0;
    size_t threads = 0;
    size_t privateBytes = 0; // committed and not shared
};

// All 0 if the process does not exist.
inline ProcessCounts countsOf(DWORD processId)
{
    ProcessCounts counts = {countHandles(processId), countThreads(processId), 0};
    const peer::OwnHandle process(OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, processId));
    // Adds up the regions, because not every system fills in its counter.
    MEMORY_BASIC_INFORMATION region{};
    const BYTE* address = nullptr;
    while (VirtualQueryEx(process.get(), address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE)
            counts.privateBytes += region.RegionSize;
        address = static_cast<const BYTE*>(region.BaseAddress) + region.RegionSize;
    }
    return counts;
}

// Creates objects until the system refuses one, destroys them and returns how many there were.
template <class Make, class Destroy>
int countUntilRefused(Make make, Destroy destroy)
{
    std::vector<decltype(make())> objects;
    while (const auto object = make())
        objects.push_back(object);
    for (const auto object : objects)
        destroy(object);
    return static_cast<int>(objects.size());
}

// How many pens and how many menus can be created until the system refuses one. The numbers drop
// with every GDI object and every menu or window in use.
inline int countFreeGraphicsObjects()
{
    return countUntilRefused([] { return CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); }, DeleteObject);
}
inline int countFreeUserObjects()
{
    return countUntilRefused(CreateMenu, DestroyMenu);
}

} // namespace testing_support
