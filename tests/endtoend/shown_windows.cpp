#include "endtoend/shown_windows.h"

#include "support/waiting.h"

#include <commctrl.h>

namespace testing_support {

HWND waitForWindowTitled(const std::wstring& title)
{
    waitUntil([&] { return FindWindowW(nullptr, title.c_str()) != nullptr; });
    return FindWindowW(nullptr, title.c_str());
}

LRESULT rowsOfList(HWND window, int number)
{
    HWND list = nullptr;
    for (int i = 0; i <= number; ++i)
        list = FindWindowExW(window, list, WC_LISTVIEWW, nullptr);
    return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
}

} // namespace testing_support
