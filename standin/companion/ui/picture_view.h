// A child window that shows a bitmap file, scaled to fit, or a line of text instead. For screen
// readers, its window text is the file name with the size of the picture in pixels, or the line.
#pragma once

#include "standin/companion/ui/look.h"

#include <string>
#include <windows.h>

namespace companion {

// Null when it cannot be created. The look must outlive it.
HWND createPictureView(HWND parent, const Look& look);

// Shows that file. If it is missing or not a bitmap, the text is shown; an empty path means no
// file.
void showPicture(HWND view, const std::wstring& path, const std::wstring& otherwise);

} // namespace companion
