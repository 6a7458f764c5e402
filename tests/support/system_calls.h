// Redirects system calls of the code under test, which is linked into the test program, to
// functions of the test. These record the order and the arguments, or return errors.
#pragma once

#include "application/imports.h"

namespace testing_support {

// The C library's DLL.
#if defined(_MSC_VER)
constexpr wchar_t cLibrary[] = L"ucrtbase.dll";
#else
constexpr wchar_t cLibrary[] = L"msvcrt.dll";
#endif

// The system's original function, even while calls are redirected. The first argument only
// determines the type.
template <class Function>
Function* systems(Function*, const char* name, const wchar_t* library = L"kernel32.dll")
{
    return std::bit_cast<Function*>(GetProcAddress(GetModuleHandleW(library), name));
}

// Redirects this program's calls of the system function to `to` until the process exits.
template <class Function>
void redirectCalls(Function* function, const char* name, Function* to,
                   const wchar_t* library = L"kernel32.dll")
{
    standin::redirectImports(GetModuleHandleW(nullptr), systems(function, name, library), to);
}

} // namespace testing_support
