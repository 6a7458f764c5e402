#include "tools/zemlink/session/companion_role.h"

#include "peer/running_programs.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/local_time.h"

namespace zemlink {
namespace {

void handleMessages()
{
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        DispatchMessageW(&message);
}

} // namespace

CompanionRole::CompanionRole() : semaphore_(peer::claimInstance())
{
    if (!semaphore_)
        throw CompanionIsRunning("the Companion is running; end it first, zemlink takes its place");
    if (const int error = peer::openNoticePort(listener_))
        throw PortIsInUse(error);
    // Hosts look for a top-level window with the property; it is never shown.
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", peer::productName, WS_POPUP, 0, 0, 0, 0,
                              nullptr, nullptr, nullptr, nullptr);
    if (!window_ ||
        !SetPropW(window_, peer::instanceProperty, reinterpret_cast<HANDLE>(INT_PTR{1})))
        throw std::runtime_error("the window that hosts look for cannot be made");
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handle));
}

CompanionRole::~CompanionRole()
{
    RemovePropW(window_, peer::instanceProperty);
    DestroyWindow(window_);
}

LRESULT CALLBACK CompanionRole::handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COPYDATA && peer::parseHandedOver(lParam)) {
        ++reinterpret_cast<CompanionRole*>(GetWindowLongPtrW(window, GWLP_USERDATA))
              ->refusedStarts_;
        return FALSE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

std::vector<ExchangeEvent> CompanionRole::receive()
{
    handleMessages();
    std::vector<ExchangeEvent> notices;
    for (std::string& bytes : peer::receiveNotices(listener_)) {
        if (bytes.empty())
            continue; // a program tested the port
        ExchangeEvent notice{currentTime(), EventKind::notice};
        notice.bytes = std::move(bytes);
        notices.push_back(std::move(notice));
    }
    return notices;
}

} // namespace zemlink
