// The listener: the thread that takes requests out of the command file.
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// Starts the listener's thread; false when it cannot be created. A command file that is missing,
// now or later, is created by the listener. UI thread.
bool startListener();

// True while a listener that was started here has not ended. UI thread.
bool isListenerRunning();

// Tells the listener to end, waits up to 1000 ms, ends it by force after that, and closes the
// thread's handle and then the command file's, which deletes the file. UI thread.
void stopListener();

// The thread's procedure. Ends with 0 when told to stop, or when the command file is larger than a
// request may be: the file then stays as it is and no further request is read.
DWORD WINAPI listenerProcedure(LPVOID);

} // namespace torvapdm
