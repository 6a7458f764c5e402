// The bare calls of an add-in's start in a host.
//
// What is loaded is the add-in's own library with its entry point and its exports taken out, so
// that neither the loader nor a host finds anything to call: the loader maps and links the same
// file with the same imports, and none of the library's code runs, neither the C library's start
// nor a constructor. The one thing that the compiler's runtime asks of the system in that start is
// made here as well: a random value for the stack guard. What opening needs of the system follows,
// call for call, from this program's own code.
#pragma once

#include <string>
#include <windows.h>

namespace bench {

// Writes the add-in's library without entry point and exports, and gives its path. Ends the program
// when it cannot.
std::wstring writeBareLibrary();

struct BareAddIn {
    HMODULE library;
    HWND window;
    HANDLE network;
    HANDLE commandFile;
    HANDLE listener;
};

// Loads the library and makes the calls of an opening: messages, window, two threads that do a
// thread's first calls and wait, registry values, command file, property.
BareAddIn startBare(const std::wstring& library, HWND mainWindow);

void stopBare(const BareAddIn& addIn, HWND mainWindow);

} // namespace bench
