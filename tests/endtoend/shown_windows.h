// What the Companion's windows show.
#pragma once

#include <string>
#include <windows.h>

namespace testing_support {

// The window with this title once it is there; null without one.
HWND waitForWindowTitled(const std::wstring& title);

// The rows of the window's n-th list, from 0.
LRESULT rowsOfList(HWND window, int number);

} // namespace testing_support
