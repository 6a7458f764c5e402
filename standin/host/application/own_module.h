// The library this code is part of, as window classes and file names need it.
#pragma once

#include <windows.h>

namespace standin {

inline HMODULE ownModule()
{
    static const char somethingOfOurs = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&somethingOfOurs), &module);
    return module;
}

} // namespace standin
