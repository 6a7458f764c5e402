#include "core/session.h"

#include <atomic>

namespace standin {

namespace {

// Written by the UI thread, read by every thread that calls the host.
std::atomic<CFrameWnd*> runningFrame{nullptr};
std::atomic<DWORD> userInterfaceThread{0};

} // namespace

void beginSession(CFrameWnd* frame)
{
    userInterfaceThread = GetCurrentThreadId();
    runningFrame = frame;
}

void endSession()
{
    runningFrame = nullptr;
}

bool isRunning()
{
    return runningFrame != nullptr;
}

bool isUserInterfaceThread()
{
    return GetCurrentThreadId() == userInterfaceThread;
}

CFrameWnd* mainFrame()
{
    return runningFrame;
}

HWND mainWindow()
{
    const CFrameWnd* const frame = runningFrame;
    return frame ? frame->m_hWnd : nullptr;
}

void repaintView()
{
    if (const HWND window = mainWindow())
        InvalidateRect(window, nullptr, FALSE);
}

} // namespace standin
