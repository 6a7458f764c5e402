// Redirects system calls of the code under test, which is part of the test program, to functions of
// the test: they record the order and the arguments, and return what the system would not.
#pragma once

#include "application/imports.h"

namespace testing_support {

// The system's own function, also while the program's calls of it are redirected. The first
// argument only gives the type.
template <class Function>
Function* systems(Function*, const char* name, const wchar_t* library = L"kernel32.dll")
{
    return std::bit_cast<Function*>(GetProcAddress(GetModuleHandleW(library), name));
}

// Redirects this program's calls of the system's function to the one at `to`, for the rest of the
// process's life.
template <class Function>
void redirectCalls(Function* function, const char* name, Function* to,
                   const wchar_t* library = L"kernel32.dll")
{
    standin::redirectImports(GetModuleHandleW(nullptr), systems(function, name, library), to);
}

} // namespace testing_support
