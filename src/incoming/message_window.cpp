#include "incoming/message_window.h"

#include "companion/identifiers.h"
#include "host/barriers.h"
#include "host/document.h"
#include "incoming/incoming_state.h"
#include "incoming/open_file.h"
#include "incoming/pending_request.h"

namespace torvapdm {

namespace {

LRESULT serveOpenMessage()
{
    if (!isRequestPending() || !isHostReady())
        return 0;
    const auto request = takePendingRequest();
    if (!request)
        return 0;
    openFile(*request);
    return 1;
}

// Posted, not sent: the listener must never wait for the host's user-interface thread, which waits
// for the listener in m_close.
void post(UINT message)
{
    if (const HWND window = messageWindow)
        PostMessageW(window, message, 0, 0);
}

} // namespace

void registerMessages()
{
    openMessage = RegisterWindowMessageW(openMessageName.c_str());
    commitMessage = RegisterWindowMessageW(commitMessageName.c_str());
    getCheckedOutMessage = RegisterWindowMessageW(getCheckedOutMessageName.c_str());
}

// Quirk Q10: the class has no module handle and is never unregistered, so a second m_open in one
// process has no message window.
HWND createMessageWindow()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = messageWindowProc;
    windowClass.lpszClassName = hostInstanceName.c_str();
    if (!RegisterClassW(&windowClass))
        return nullptr;
    return CreateWindowExW(0, hostInstanceName.c_str(), L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, getMainFrameWindow(),
                           nullptr, nullptr, nullptr);
}

void openMessageWindow()
{
    closeMessageWindow();
    messageWindow = createMessageWindow();
}

void closeMessageWindow()
{
    if (const HWND window = messageWindow.exchange(nullptr))
        DestroyWindow(window);
}

void postOpenRequest(std::unique_ptr<CompanionFile> request)
{
    storePendingRequest(std::move(request));
    postOpenMessage();
}

void postOpenMessage()
{
    post(openMessage);
}

void postMoveMessage()
{
    post(WM_MOVE);
}

LRESULT CALLBACK messageWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == openMessage && window == messageWindow)
        return barrier<LRESULT>(0, serveOpenMessage);
    // Another program may have destroyed the window; its handle can be reused by a different one.
    if (message == WM_NCDESTROY && window == messageWindow)
        messageWindow = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace torvapdm
