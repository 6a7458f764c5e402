// What the entry of a program or DLL calls.
#pragma once

#include <windows.h>

// Prepares the module's exit functions and runs its initialisers.
void initialiseModule();

// Runs the module's exit functions, last registered first.
void endModule();

// endModule, then the end of the process.
[[noreturn]] void endProgram(int exitCode);
