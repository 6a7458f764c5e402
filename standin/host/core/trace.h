// The trace's file and waiting for lines. control.h declares how lines are written and read.
#pragma once

#include "host/import.h"

#include <string>
#include <windows.h>

namespace standin {

// Drops earlier lines and also writes new ones to this file; with an empty path lines are kept in
// memory only. False if the file cannot be created.
MCCORE_API bool openTrace(const std::wstring& path);

// Closes the file; the lines stay in memory.
MCCORE_API void closeTrace();

// An auto-reset event, set by each new line of a thread other than the UI thread, which is the one
// that waits. The trace owns it.
MCCORE_API HANDLE traceSignal();

// Finds the next line with this text after the last line found.
MCCORE_API bool findInTrace(const std::wstring& text);

} // namespace standin
