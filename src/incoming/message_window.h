// The hidden window through which the listener reaches the host's user-interface thread, and the
// messages registered for it. UI thread.
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// Registers the open, commit and get-checked-out messages, in this order.
void registerMessages();

// Registers the window class and creates the window, which is never shown. Null when either fails:
// a process registers the class once, so that a second call fails.
HWND createMessageWindow();

// The window's procedure. Answers the open message with 1 when it took a request, with 0 when there
// was none or the host was not ready for it; everything else gets the default treatment.
LRESULT CALLBACK messageWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// True when the host can take a file: its main window is enabled (no modal dialog is open) and no
// backplot runs.
bool isHostReady();

} // namespace torvapdm
