// Whether a host program runs in this process, on which thread, and its main window.
#pragma once

#include "framework/framework.h"
#include "host/import.h"

namespace standin {

// Enables the host operations. The calling thread becomes the UI thread. The caller keeps the
// window, which must outlive the session.
MCCORE_API void beginSession(CFrameWnd* mainFrame);

// Makes the host operations return null and false.
MCCORE_API void endSession();

MCCORE_API bool isRunning();
MCCORE_API bool isUserInterfaceThread();

// Null while no host program runs.
MCCORE_API CFrameWnd* mainFrame();
MCCORE_API HWND mainWindow();

// Redraws the view. Any thread.
MCCORE_API void repaintView();

} // namespace standin
