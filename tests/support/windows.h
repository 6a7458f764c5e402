// Finds, observes and closes windows.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

namespace testing_support {

// The process's first top-level window with the property, or null.
HWND windowWithProperty(DWORD processId, const wchar_t* property);

// Waits for the window with this title; null on timeout.
HWND waitForWindowTitled(const std::wstring& title);

// The picture description shown in the tools window.
std::wstring shownPicture(HWND window);

// Presses the key in the window's first list to select another row.
void selectWith(WPARAM key, HWND window);

// The number of rows in the window's n-th list, counted from 0.
LRESULT rowsOfList(HWND window, int number);

// While it exists, dialogs that appear on this thread are closed with OK immediately.
class SystemDialogs {
public:
    SystemDialogs();
    ~SystemDialogs();
    SystemDialogs(const SystemDialogs&) = delete;
    SystemDialogs& operator=(const SystemDialogs&) = delete;

private:
    HHOOK hook_;
};

// While it exists, replaces the message window and records the messages posted to it.
class WatchedMessageWindow {
public:
    WatchedMessageWindow();
    ~WatchedMessageWindow();
    WatchedMessageWindow(const WatchedMessageWindow&) = delete;
    WatchedMessageWindow& operator=(const WatchedMessageWindow&) = delete;

    // Ids of the messages received with wParam and lParam 0. Runs the message loop.
    const std::vector<UINT>& arrived() const;

private:
    static LRESULT CALLBACK remember(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    const HWND replaced_;
    const HWND window_;
    std::vector<UINT> arrived_;
};

} // namespace testing_support
