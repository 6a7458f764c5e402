#include "support/shown_windows.h"

#include "support/waiting.h"

#include <commctrl.h>
#include <iterator>

namespace testing_support {

HWND waitForWindowTitled(const std::wstring& title)
{
    waitUntil([&] { return FindWindowW(nullptr, title.c_str()) != nullptr; });
    return FindWindowW(nullptr, title.c_str());
}

std::wstring shownPicture(HWND window)
{
    wchar_t text[256] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(FindWindowExW(window, nullptr, L"ZemPictureView", nullptr), WM_GETTEXT,
                        std::size(text), reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 1000,
                        &length);
    return text;
}

void selectWith(WPARAM key, HWND window)
{
    PostMessageW(FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr), WM_KEYDOWN, key, 1);
}

LRESULT rowsOfList(HWND window, int number)
{
    HWND list = nullptr;
    for (int i = 0; i <= number; ++i)
        list = FindWindowExW(window, list, WC_LISTVIEWW, nullptr);
    return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
}

} // namespace testing_support
