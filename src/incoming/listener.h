// The listener: the thread that polls the command file. The add-in keeps the command file open, and
// empty, from m_open to m_close; it is deleted with its handle.
#pragma once

#include "platform/windows_api.h"

#include <string>

namespace torvapdm {

// Steps of a cycle. Exposed for the tests.

// Creates the command file, empty. The caller owns the handle; INVALID_HANDLE_VALUE on failure.
HANDLE createCommandFile(const std::wstring& path);

// The file's size in bytes; 0 when it cannot be determined.
LONGLONG commandFileSize(HANDLE file);

// Reads the first `size` bytes. The text always has this length; bytes that cannot be read are
// NULs.
std::string readCommandFile(HANDLE file, LONGLONG size);

// Creates the command file, and then starts the thread, which creates the file later if it is
// missing. Does nothing while a listener runs. False when the thread cannot be created. UI thread.
bool startListener();

// True while a started listener has not ended. UI thread.
bool isListenerRunning();

// Makes the thread end, waits up to 1000 ms, terminates it after that, and closes its handle and
// the command file's. UI thread.
void stopListener();

// The thread function. Returns 0 when `listenerStopFlag` is set, or when the command file is larger
// than a command can be: the file then stays as it is, and no further command is read.
DWORD WINAPI listenerProcedure(LPVOID);

} // namespace torvapdm
