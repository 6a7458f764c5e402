// What the Companion's windows show.
#pragma once

#include <string>
#include <windows.h>

namespace testing_support {

// The window with this title once it is there; null without one.
HWND waitForWindowTitled(const std::wstring& title);

// What the window of the tools says its picture is.
std::wstring shownPicture(HWND window);

// Presses the key in the window's first list, which selects another row.
void selectWith(WPARAM key, HWND window);

// The rows of the window's n-th list, from 0.
LRESULT rowsOfList(HWND window, int number);

} // namespace testing_support
