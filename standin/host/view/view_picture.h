// Pictures of the view.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

// Writes the view of this window, in its present size, as a bitmap file of 24 bits a pixel; false
// when the file cannot be written.
bool writeViewPicture(HWND window, const std::wstring& path);

} // namespace standin
