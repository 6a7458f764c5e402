// A child window that shows a bitmap file, fitted into it, or a line of text in its place. Its
// window text says the same to who cannot see it: the file's name with the picture's size in
// pixels, or the line.
#pragma once

#include "standin/companion/ui/look.h"

#include <string>
#include <windows.h>

namespace companion {

// Null when it cannot be created. The look outlives it.
HWND createPictureView(HWND parent, const Look& look);

// Shows that file. Where it is missing or no bitmap, the text is shown; an empty path is no file.
void showPicture(HWND view, const std::wstring& path, const std::wstring& otherwise);

} // namespace companion
