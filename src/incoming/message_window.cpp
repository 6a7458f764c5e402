#include "incoming/message_window.h"

#include "incoming/open_file.h"
#include "host/host.h"
#include "host/barriers.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "incoming/pending_request.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

LRESULT takePendingRequest()
{
    if (!isRequestPending() || !isHostReady())
        return 0;
    const auto request = takeOpenRequest();
    if (!request)
        return 0;
    openFile(request->id, request->path); // the one call up, into the load pipeline
    return 1;
}

} // namespace

void registerMessages()
{
    openMessage = RegisterWindowMessageW(openMessageName.c_str());
    commitMessage = RegisterWindowMessageW(commitMessageName.c_str());
    getCheckedOutMessage = RegisterWindowMessageW(getCheckedOutMessageName.c_str());
}

HWND createMessageWindow()
{
    // Deliberate: the class has no module handle and is never unregistered, so that a second m_open
    // in one process has no message window. One would expect the class to go with the window; the
    // host loads the add-in once a process.
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = messageWindowProc;
    windowClass.lpszClassName = hostInstanceName.c_str();
    if (!RegisterClassW(&windowClass))
        return nullptr;
    return CreateWindowExW(0, hostInstanceName.c_str(), L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, getMainFrameWindow(),
                           nullptr, nullptr, nullptr);
}

// The system calls this on the host's user-interface thread, out of the host's message loop.
LRESULT CALLBACK messageWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == openMessage && window == messageWindow)
        return atEdge<LRESULT>(0, takePendingRequest);
    // Whoever destroys the window, its handle is not kept: it may be another's later.
    if (message == WM_NCDESTROY && window == messageWindow)
        messageWindow = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
}

bool isHostReady()
{
    if (!IsWindowEnabled(getMainFrameWindow()))
        return false;
    bool backplot = true; // a host that cannot say is not ready
    callHost([&] { backplot = BackplotActive(); });
    return !backplot;
}

} // namespace torvapdm
