// Redirects a module's imported functions.
#pragma once

#include <bit>
#include <windows.h>

namespace standin {

// Replaces the address `from` by `to` in all of the module's import tables. By address and not by
// name, so the DLL from which the module imports the function does not matter.
void redirectImports(HMODULE module, ULONGLONG from, ULONGLONG to);

// The same for two functions of one type.
template <class Function>
void redirectImports(HMODULE module, Function* from, Function* to)
{
    redirectImports(module, std::bit_cast<ULONGLONG>(from), std::bit_cast<ULONGLONG>(to));
}

} // namespace standin
