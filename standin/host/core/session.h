// Whether a host program runs in this process, on which thread, and its main window.
#pragma once

#include "framework/framework.h"
#include "host/import.h"

namespace standin {

// From here on the host operations work. The calling thread is the user-interface thread; the
// window stays its owner's and outlives the session.
MCCORE_API void beginSession(CFrameWnd* mainFrame);

// From here on the host operations answer null and false.
MCCORE_API void endSession();

MCCORE_API bool isRunning();
MCCORE_API bool isUserInterfaceThread();

// Null while no host program runs.
MCCORE_API CFrameWnd* mainFrame();
MCCORE_API HWND mainWindow();

// Has the view drawn anew. Any thread.
MCCORE_API void repaintView();

} // namespace standin
