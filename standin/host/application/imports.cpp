#include "application/imports.h"

namespace standin {

namespace {

template <class Target>
Target* inModule(HMODULE module, DWORD offset)
{
    return reinterpret_cast<Target*>(reinterpret_cast<char*>(module) + offset);
}

IMAGE_IMPORT_DESCRIPTOR* importsOf(HMODULE module)
{
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    const auto* const headers =
        inModule<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
    const DWORD offset =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    return offset == 0 ? nullptr : inModule<IMAGE_IMPORT_DESCRIPTOR>(module, offset);
}

void setEntry(ULONGLONG& entry, ULONGLONG address)
{
    DWORD protection = 0;
    if (!VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &protection))
        return;
    entry = address;
    VirtualProtect(&entry, sizeof entry, protection, &protection);
}

} // namespace

void redirectImports(HMODULE module, ULONGLONG from, ULONGLONG to)
{
    IMAGE_IMPORT_DESCRIPTOR* library = importsOf(module);
    if (!library)
        return;
    for (; library->Name != 0; ++library) {
        auto* entry = inModule<IMAGE_THUNK_DATA64>(module, library->FirstThunk);
        for (; entry->u1.Function != 0; ++entry)
            if (entry->u1.Function == from)
                setEntry(entry->u1.Function, to);
    }
}

} // namespace standin
