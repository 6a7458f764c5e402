// The Companion's process: whether it runs, starting it, finding and raising its window. UI thread.
#pragma once

#include "platform/windows_api.h"

#include <string>

namespace torvapdm {

// True while a Companion holds its semaphore, even one of another user.
bool isCompanionRunning();

// Starts the Companion with these arguments: shown without any, hidden otherwise. True when the
// shell started it. A missing program file shows a message box unless `quiet`; a failed start
// shows nothing.
bool launchCompanion(const std::wstring& arguments, bool quiet);

// True when the Companion runs or was just started; does not wait for it. Shows a message box when
// it cannot be started.
bool ensureCompanionRunning();

// The Companion's top-level window, or null.
HWND findCompanionWindow();

// Starts the Companion unless it runs and brings its window to the front, waiting up to about 1.5 s
// for the window. Shows a message box on failure.
void openCompanion();

// Opens a file or an address with the shell; true when the shell accepted it.
bool shellOpen(const std::wstring& target);

} // namespace torvapdm
