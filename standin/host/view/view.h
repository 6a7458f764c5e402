// The view of the open part in the main window: its geometry and toolpaths from above, the list of
// its operations, the active machine and the document's name.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

// Draws the open part, as it is now, into the area. Any device context.
void drawView(HDC context, const RECT& area);

// Answers WM_PAINT of the main window.
void paintView(HWND window);

// Moves the list of operations by so many rows.
void scrollOperations(int rows);

// Writes the view of this window, in its present size, as a bitmap file with 24 bits per pixel;
// false if the file cannot be written.
bool writeViewPicture(HWND window, const std::wstring& path);

} // namespace standin
