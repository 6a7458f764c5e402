// The system calls of an add-in's start in a host and nothing else.
//
// The add-in's library is loaded without its entry point and exports: the loader maps and links the
// same file with the same imports, but none of its code runs, not even the C library's
// initialisation or a constructor. The system call that the compiler's runtime makes there, for the
// stack guard's random value, is made here as well, followed by the system calls of m_open.
#pragma once

#include <string>
#include <windows.h>

namespace bench {

// Writes the add-in's library without entry point and exports, and gives its path. Ends the program
// on failure.
std::wstring writeBareLibrary();

struct BareAddIn {
    HMODULE library;
    HWND window;
    HANDLE network;
    HANDLE commandFile;
    HANDLE listener;
};

// Loads the library and makes the system calls of m_open: messages, window, two threads that wait,
// registry values, command file, property.
BareAddIn startBare(const std::wstring& library, HWND mainWindow);

void stopBare(const BareAddIn& addIn, HWND mainWindow);

} // namespace bench
