// The trace: where it goes and how waiting for a line works. Its lines themselves are written and
// read through control.h.
#pragma once

#include "host/import.h"

#include <string>
#include <windows.h>

namespace standin {

// Forgets earlier lines and writes new ones to this file too; an empty path keeps them in memory
// only. False when the file cannot be created.
MCCORE_API bool openTrace(const std::wstring& path);

// Closes the file; the lines stay readable in memory.
MCCORE_API void closeTrace();

// Signalled by each new line of another thread, reset by the wait that it ends: the
// user-interface thread, which waits, sees its own lines between its messages. Owned by the trace.
MCCORE_API HANDLE traceSignal();

// Looks for a line with this text behind the last line found and takes it as the last one found.
MCCORE_API bool findInTrace(const std::wstring& text);

} // namespace standin
