// The message window: the hidden window through which the listener reaches the host's
// user-interface thread, and the messages registered for it.
#pragma once

#include "formats/companion_file.h"
#include "platform/windows_api.h"

#include <memory>

namespace torvapdm {

// Registers the open, commit and get-checked-out messages, in this order. UI thread.
void registerMessages();

// Registers the window's class and creates the window, which is never shown; null when either
// fails. A process can register the class only once. UI thread.
HWND createMessageWindow();

// Creates the window, in place of one left over from an m_open without a matching m_close.
// UI thread.
void openMessageWindow();

// Destroys the window if there is one. UI thread.
void closeMessageWindow();

// Makes the open request, not null, the pending one and posts the open message. Allocates nothing.
// Any thread.
void postOpenRequest(std::unique_ptr<CompanionFile> request);

// Posts the open message, which makes the window take the pending request. Does nothing without a
// window. Any thread.
void postOpenMessage();

// Posts WM_MOVE, which the window does not handle. Does nothing without a window. Any thread.
void postMoveMessage();

// The window's procedure. Answers the open message with 1 when it took a request, with 0 when none
// is pending or the host is not ready; every other message goes to DefWindowProcW.
LRESULT CALLBACK messageWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace torvapdm
