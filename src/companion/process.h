// The Companion's process: whether it runs, starting it with one of its command lines, finding and
// raising its window.
//
//   (empty)                          plain start, shown
//   --checkout "FILE"                hidden, like all that follow
//   --commit "FILE"
//   --commit "FILE" --id 4294967295
//   --about --parentwindow NUMBER
//
// All of it runs on the UI thread.
#pragma once

#include "framework/framework.h"

#include <string>

namespace torvapdm {

// True while a Companion holds its semaphore, also one that belongs to another user.
bool isCompanionRunning();

// Starts the Companion with these arguments: shown normally without any, hidden otherwise. True
// when the start was handed to the shell. A missing program file shows a message unless `quiet`; a
// failed start shows nothing.
bool launchCompanion(const std::wstring& arguments, bool quiet);

// True when the Companion runs or was started just now; it is not waited for. Shows a message when
// it cannot be started.
bool ensureCompanionRunning();

// The Companion's top-level window, or null.
HWND findCompanionWindow();

// Starts the Companion if need be and brings its window to the front, waiting up to about 1.5 s for
// it. Shows a message when there is none.
void openCompanion();

// Opens a file or an address as the shell does; true when the shell took it.
bool shellOpen(const std::wstring& target);

} // namespace torvapdm
