// Finds and observes windows.
#pragma once

#include "support/waiting.h"

#include <commctrl.h>
#include <iterator>
#include <string>
#include <windows.h>

namespace testing_support {

// The process's first top-level window with the property, or null.
inline HWND windowWithProperty(DWORD processId, const wchar_t* property)
{
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == processId && GetPropW(window, property))
            return window;
    }
    return nullptr;
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
