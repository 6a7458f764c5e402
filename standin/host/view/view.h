// The view of the open part in the main window: geometry and toolpaths from above, the list of
// operations, the active machine and the document's name.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

// Draws the open part into the area, in any device context.
void drawView(HDC context, const RECT& area);

// Handles WM_PAINT of the main window.
void paintView(HWND window);

// Scrolls the list of operations by this many rows.
void scrollOperations(int rows);

// Writes the view of this window, in its present size, as a bitmap file with 24 bits per pixel;
// false if the file cannot be written.
bool writeViewPicture(HWND window, const std::wstring& path);

} // namespace standin
