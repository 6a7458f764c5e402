// Windows that tests look for, watch or close.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

namespace testing_support {

// The process's first top-level window that carries the property; null when it has none.
HWND windowWithProperty(DWORD processId, const wchar_t* property);

// The window with this title once it is there; null without one.
HWND waitForWindowTitled(const std::wstring& title);

// What the window of the tools says its picture is.
std::wstring shownPicture(HWND window);

// Presses the key in the window's first list, which selects another row.
void selectWith(WPARAM key, HWND window);

// The rows of the window's n-th list, from 0.
LRESULT rowsOfList(HWND window, int number);

// While it lives, dialogs that appear on this thread are closed with OK at once.
class SystemDialogs {
public:
    SystemDialogs();
    ~SystemDialogs();
    SystemDialogs(const SystemDialogs&) = delete;
    SystemDialogs& operator=(const SystemDialogs&) = delete;

private:
    HHOOK hook_;
};

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
