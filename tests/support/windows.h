// Finds and observes windows.
#pragma once

#include "support/waiting.h"

#include <commctrl.h>
#include <iterator>
#include <string>
#include <windows.h>

namespace testing_support {

struct WindowSearch {
    DWORD process;
    const wchar_t* property;
    HWND found = nullptr;
};

inline BOOL CALLBACK stopAtWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.process || !GetPropW(window, search.property))
        return TRUE;
    search.found = window;
    return FALSE;
}

// The process's first top-level window with the property, or null. A walk from one window to the
// next would miss some while other programs' windows open and close.
inline HWND windowWithProperty(DWORD processId, const wchar_t* property)
{
    WindowSearch search{processId, property};
    EnumWindows(stopAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Waits for the window with this title; null on timeout.
inline HWND waitForWindowTitled(const std::wstring& title)
{
    waitUntil([&] { return FindWindowW(nullptr, title.c_str()) != nullptr; });
    return FindWindowW(nullptr, title.c_str());
}

// The picture description shown in the tools window.
inline std::wstring shownPicture(HWND window)
{
    wchar_t text[256] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(FindWindowExW(window, nullptr, L"ZemPictureView", nullptr), WM_GETTEXT,
                        std::size(text), reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 1000,
                        &length);
    return text;
}

// Presses the key in the window's first list to select another row.
inline void selectWith(WPARAM key, HWND window)
{
    PostMessageW(FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr), WM_KEYDOWN, key, 1);
}

// The number of rows in the window's n-th list, counted from 0.
inline LRESULT rowsOfList(HWND window, int number)
{
    HWND list = nullptr;
    for (int i = 0; i <= number; ++i)
        list = FindWindowExW(window, list, WC_LISTVIEWW, nullptr);
    return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
}

} // namespace testing_support
