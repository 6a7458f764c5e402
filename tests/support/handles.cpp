#include "support/handles.h"

#include <cstdio>
#include <cstdlib>
#include <vector>
#include <windows.h>

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

constexpr ULONG extendedHandleInformation = 64; // a kind that no header names

QuerySystemInformation systemQuery()
{
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return reinterpret_cast<QuerySystemInformation>(
        reinterpret_cast<void*>(GetProcAddress(library, "NtQuerySystemInformation")));
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

} // namespace testing_support
