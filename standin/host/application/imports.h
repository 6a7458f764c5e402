// The calls of a module into the system, led elsewhere.
#pragma once

#include <bit>
#include <windows.h>

namespace standin {

// Leads every entry of the module's import tables that holds the function at `from` to the one at
// `to`. By address, not by name: whichever library the module takes it from, it is the same
// function.
void leadImports(HMODULE module, ULONGLONG from, ULONGLONG to);

// The same for two functions of one type.
template <class Function>
void leadImports(HMODULE module, Function* from, Function* to)
{
    leadImports(module, std::bit_cast<ULONGLONG>(from), std::bit_cast<ULONGLONG>(to));
}

} // namespace standin
