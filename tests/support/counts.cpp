#include "support/counts.h"

#include <cstdio>
#include <cstdlib>
#include <vector>
#include <windows.h>
// Must come after windows.h.
#include <tlhelp32.h>

namespace testing_support {

namespace {

struct HandleRow {
    void* object;
    ULONG_PTR processId;
    ULONG_PTR handle;
    ULONG access;
    USHORT traceIndex;
    USHORT typeIndex;
    ULONG attributes;
    ULONG reserved;
};

struct HandleTable {
    ULONG_PTR count;
    ULONG_PTR reserved;
    HandleRow rows[1];
};

using QuerySystemInformation = LONG(WINAPI*)(ULONG kind, void* bytes, ULONG size, ULONG* needed);

constexpr ULONG extendedHandleInformation = 64; // not declared in any header

QuerySystemInformation systemQuery()
{
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return reinterpret_cast<QuerySystemInformation>(
        reinterpret_cast<void*>(GetProcAddress(library, "NtQuerySystemInformation")));
}

// Committed private memory. Adds up the regions, because not every system fills in its counter.
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

} // namespace

size_t countHandles()
{
    return countHandles(GetCurrentProcessId());
}

size_t countHandles(unsigned long processId)
{
    std::vector<BYTE> bytes(8 << 20);
    ULONG size = 0;
    if (systemQuery()(extendedHandleInformation, bytes.data(), static_cast<ULONG>(bytes.size()),
                      &size) != 0) {
        std::fprintf(stderr, "the system does not list its handles\n");
        std::exit(99);
    }
    const auto* const table = reinterpret_cast<const HandleTable*>(bytes.data());
    size_t found = 0;
    for (ULONG_PTR i = 0; i < table->count; ++i)
        found += table->rows[i].processId == processId;
    return found;
}

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

int countFreeGraphicsObjects()
{
    return countUntilRefused([] { return CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); }, DeleteObject);
}

int countFreeUserObjects()
{
    return countUntilRefused(CreateMenu, DestroyMenu);
}

} // namespace testing_support
