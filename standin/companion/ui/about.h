// The about window.
#pragma once

#include <cstdint>
#include <windows.h>

namespace companion {

// Shows it over the parent window, given by the low 32 bits of its handle, or over `fallback` when
// that is no window. It blocks nobody and belongs to this thread; a second call brings the open
// one forward.
void showAbout(HWND fallback, std::uint32_t parentWindow);

} // namespace companion
