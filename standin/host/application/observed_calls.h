// What the host does in the place of a system call of the add-in. Any thread.
#pragma once

#include <windows.h>

namespace standin {

// MessageBoxW, traced, and closed with OK while message boxes are answered.
int WINAPI observedMessageBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

// TrackPopupMenu, traced with its rows. With an item chosen beforehand the menu does not open.
BOOL WINAPI observedPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
                              const RECT* excluded);

bool areMessageBoxesAnswered();

} // namespace standin
