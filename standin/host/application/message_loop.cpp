#include "application/message_loop.h"

#include "control.h"
#include "core/trace.h"
#include "framework/framework.h"

#include <algorithm>

namespace standin {

namespace {

bool isQuittingNow = false;

void dispatch(const MSG& message)
{
    // An exception that escapes from the add-in's window procedure ends here, as in the framework's
    // own message loop.
    try {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    } catch (CException* exception) {
        exception->Delete();
    }
}

// False if no message was waiting.
bool processWaitingMessage()
{
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        return false;
    if (message.message == WM_QUIT)
        isQuittingNow = true;
    else
        dispatch(message);
    return true;
}

void processWaitingMessages()
{
    while (!isQuittingNow && processWaitingMessage()) {
    }
}

// Waits for a message, for the signal unless it is null, or for the timeout.
void waitForWork(HANDLE signal, DWORD milliseconds)
{
    MsgWaitForMultipleObjectsEx(signal ? 1 : 0, signal ? &signal : nullptr, milliseconds,
                                QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

// Runs the message loop until `isDone` or the timeout; false after the timeout or when quitting.
template <class Condition>
bool pumpUntil(Condition isDone, HANDLE signal, unsigned milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (true) {
        processWaitingMessages();
        if (isDone())
            return true;
        const ULONGLONG now = GetTickCount64();
        if (isQuittingNow || now >= end)
            return false;
        waitForWork(signal, static_cast<DWORD>(std::min<ULONGLONG>(end - now, INFINITE - 1)));
    }
}

} // namespace

bool processOneMessage()
{
    constexpr DWORD moment = 50;
    if (!isQuittingNow && !processWaitingMessage()) {
        waitForWork(nullptr, moment);
        processWaitingMessage();
    }
    return !isQuittingNow;
}

void requestQuit()
{
    isQuittingNow = true;
    // Also ends the message loops of dialogs and menus.
    PostQuitMessage(0);
    EndMenu();
}

void resetQuit()
{
    MSG message;
    PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    isQuittingNow = false;
}

bool isQuitting()
{
    return isQuittingNow;
}

void runMessageLoop()
{
    while (!isQuittingNow) {
        processWaitingMessages();
        if (!isQuittingNow)
            waitForWork(nullptr, INFINITE);
    }
}

bool pumpFor(unsigned milliseconds)
{
    pumpUntil([] { return false; }, nullptr, milliseconds);
    return !isQuittingNow;
}

bool waitForTrace(const std::wstring& text, unsigned milliseconds)
{
    return pumpUntil([&] { return findInTrace(text); }, traceSignal(), milliseconds);
}

} // namespace standin
