#include "support/watched_window.h"

#include "support/add_in_state.h"
#include "support/waiting.h"

namespace testing_support {

// A window for messages alone: nothing comes to it but what is posted to it.
WatchedMessageWindow::WatchedMessageWindow()
    : replaced_(AddInState::messageWindow()),
      window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                              nullptr))
{
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&remember));
    AddInState::setMessageWindow(window_);
}

WatchedMessageWindow::~WatchedMessageWindow()
{
    AddInState::setMessageWindow(replaced_);
    DestroyWindow(window_);
}

const std::vector<UINT>& WatchedMessageWindow::arrived() const
{
    pumpMessages();
    return arrived_;
}

LRESULT CALLBACK WatchedMessageWindow::remember(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam)
{
    auto* const self =
        reinterpret_cast<WatchedMessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (wParam == 0 && lParam == 0)
        self->arrived_.push_back(message);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace testing_support
