// A window in the add-in's message window's place.
#pragma once

#include <vector>
#include <windows.h>

namespace testing_support {

// Takes the message window's place for as long as it lives and remembers what was posted.
class WatchedMessageWindow {
public:
    WatchedMessageWindow();
    ~WatchedMessageWindow();
    WatchedMessageWindow(const WatchedMessageWindow&) = delete;
    WatchedMessageWindow& operator=(const WatchedMessageWindow&) = delete;

    // The numbers of the messages that have arrived with both parameters 0. Runs the message loop.
    const std::vector<UINT>& arrived() const;

private:
    static LRESULT CALLBACK remember(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    const HWND replaced_;
    const HWND window_;
    std::vector<UINT> arrived_;
};

} // namespace testing_support
