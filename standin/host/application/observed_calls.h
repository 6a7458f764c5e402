// Replacements for Windows functions that the add-in calls. Any thread.
#pragma once

#include <windows.h>

namespace standin {

// MessageBoxW, traced, and closed with OK while message boxes are answered automatically.
int WINAPI observedMessageBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

// TrackPopupMenu, traced with its rows. If an item was chosen beforehand, the menu does not open.
BOOL WINAPI observedPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
                              const RECT* excluded);

bool areMessageBoxesAnswered();

} // namespace standin
