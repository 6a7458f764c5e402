// Opening and closing the add-in. UI thread.
#pragma once

namespace torvapdm {

// Starts everything: messages, message window, network thread, command file, listener, and the
// property by which the Companion finds the host. A step that fails does not stop the next. Gives
// 0.
int openAddIn();

// Stops everything but the network thread. Gives 0.
int closeAddIn();

} // namespace torvapdm
