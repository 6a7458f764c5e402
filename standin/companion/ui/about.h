// The about window.
#pragma once

#include <cstdint>
#include <windows.h>

namespace companion {

// Shows it over the parent window, given by the low 32 bits of its handle, or over `fallback` if
// that is not a window. It is not modal and runs on this thread; a second call brings the open
// window to the front.
void showAbout(HWND fallback, std::uint32_t parentWindow);

} // namespace companion
